// Test support: paths of the shared real-world data files and scratch files for tests.
#pragma once

#include <string>

#include "KivString.h"

// Path of ../shared/<relative> and ../shared/data/<relative> as the platform's file functions take them.
KivString sharedPath(const std::string& relative);
KivString sharedDataPath(const std::string& relative);
// The whole text of ../shared/spec.md (UTF-8), for tests that check data against the contract.
std::string specText();

// A file in a private temporary folder, removed with the object.
class TempFile {
public:
    explicit TempFile(const std::string& bytes, const std::string& name = "kiv-test.txt");
    ~TempFile();
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    const KivString& path() const { return m_path; }
    const KivString& folder() const { return m_folder; }

private:
    KivString m_path;
    KivString m_folder;
    std::string m_native;
    std::string m_nativeFolder;
};
