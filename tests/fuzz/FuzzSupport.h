// Shared by the fuzz targets: a scratch folder of the process for the files a target writes (the
// module only ever reads files; a target writes the bytes it was given so that the module reads them
// as a host's file), bytes as text, and the headers of a definition file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <unistd.h>

#include "KivString.h"

namespace kivfuzz {

// A folder under $TMPDIR (or /tmp) made for this process and removed with its files at exit.
class ScratchFolder {
public:
    ScratchFolder() {
        const char* base = std::getenv("TMPDIR");
        std::string pattern = std::string(base != nullptr && *base != '\0' ? base : "/tmp") + "/kivfuzz.XXXXXX";
        std::vector<char> buffer(pattern.begin(), pattern.end());
        buffer.push_back('\0');
        if (mkdtemp(buffer.data()) == nullptr) std::abort();
        m_path = buffer.data();
    }
    ~ScratchFolder() {
        for (const std::string& f : m_files) std::remove((m_path + "/" + f).c_str());
        rmdir(m_path.c_str());
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    // Writes `name` with the bytes; its path as the module's text.
    KivString write(const std::string& name, const std::uint8_t* data, std::size_t size) {
        const std::string path = m_path + "/" + name;
        std::FILE* f = std::fopen(path.c_str(), "wb");
        if (f == nullptr) std::abort();
        if (size > 0 && std::fwrite(data, 1, size, f) != size) std::abort();
        std::fclose(f);
        bool known = false;
        for (const std::string& k : m_files) known = known || k == name;
        if (!known) m_files.push_back(name);
        return KivString::fromUtf8(path);
    }
    KivString path() const { return KivString::fromUtf8(m_path); }

private:
    std::string m_path;
    std::vector<std::string> m_files;
};

// Each byte as the character of the same value, as the module reads an 8-bit file.
inline KivString latin1(const std::uint8_t* data, std::size_t size) {
    std::u16string text(size, u'\0');
    for (std::size_t i = 0; i < size; ++i) text[i] = static_cast<char16_t>(data[i]);
    return KivString(text);
}

// The names of the first `limit` headers ("*NAME," at a line start) of a definition file, so that
// a real file given as a seed has its entries looked up.
inline std::vector<KivString> headerNames(const std::uint8_t* data, std::size_t size, std::size_t limit) {
    std::vector<KivString> names;
    for (std::size_t i = 0; i < size && names.size() < limit; ++i) {
        if (data[i] != '*' || (i > 0 && data[i - 1] != '\n')) continue;
        std::size_t end = i + 1;
        while (end < size && data[end] != ',' && data[end] != '\n' && end - i < 64) ++end;
        names.push_back(latin1(data + i + 1, end - i - 1));
    }
    return names;
}

// Stops the run: libFuzzer reports the input that broke a property.
[[noreturn]] inline void broken(const char* what) {
    std::fprintf(stderr, "property broken: %s\n", what);
    std::abort();
}

}  // namespace kivfuzz
