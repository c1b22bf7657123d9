#include "AssertCapture.h"

#include "KivAssert.h"
#include "KivString.h"

namespace {
AssertCapture* g_active = nullptr;
std::vector<AssertReport>* g_sink = nullptr;
}  // namespace

AssertCapture::AssertCapture() {
    g_active = this;
    g_sink = &m_reports;
    m_previous = reinterpret_cast<void*>(KivAssert::setReporter(&AssertCapture::capture));
}

AssertCapture::~AssertCapture() {
    KivAssert::setReporter(reinterpret_cast<KivAssert::Reporter>(m_previous));
    g_active = nullptr;
    g_sink = nullptr;
}

void AssertCapture::capture(const wchar_t* expression, const wchar_t* file, unsigned int line) {
    if (g_sink != nullptr) g_sink->push_back({KivString(expression).toUtf8(), KivString(file).toUtf8(), line});
}
