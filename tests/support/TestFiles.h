// Test support: paths of the shared real-world data files and scratch files for tests.
#pragma once

#include <string>
#include <vector>

#include "KivPrinters.h"
#include "KivString.h"

// Path of ../shared/data/<relative> (the real-world linetype and pattern files, read in place) as
// the platform's file functions take it.
KivString sharedDataPath(const std::string& relative);
// The same path for the C++ library (UTF-8, this platform's separators).
std::string sharedDataNativePath(const std::string& relative);
// The names of the files in ../shared/data/<folder>, sorted.
std::vector<std::string> sharedDataFiles(const std::string& folder);

// A file in a private temporary folder, removed with the object.
class TempFile {
public:
    explicit TempFile(const std::string& bytes, const std::string& name = "kiv-test.txt");
    ~TempFile();
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    const KivString& path() const { return m_path; }
    const KivString& folder() const { return m_folder; }
    const std::string& nativePath() const { return m_native; }

private:
    KivString m_path;
    KivString m_folder;
    std::string m_native;
    std::string m_nativeFolder;
};

// Whether this process holds the file open: on Linux a descriptor in /proc/self/fd points at it;
// on Windows the file cannot be renamed while the C library holds it (no delete sharing).
bool fileIsOpenInThisProcess(const TempFile& file);
