// Test support: captures KivAssert reports for the lifetime of the object (not nestable).
#pragma once

#include <string>
#include <vector>

struct AssertReport {
    std::string expression;  // UTF-8
    std::string file;        // UTF-8
    unsigned int line;
};

class AssertCapture {
public:
    AssertCapture();
    ~AssertCapture();
    AssertCapture(const AssertCapture&) = delete;
    AssertCapture& operator=(const AssertCapture&) = delete;

    const std::vector<AssertReport>& reports() const { return m_reports; }
    void clear() { m_reports.clear(); }

private:
    static void capture(const wchar_t* expression, const wchar_t* file, unsigned int line);
    std::vector<AssertReport> m_reports;
    void* m_previous;
};
