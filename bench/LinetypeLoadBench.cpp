// LoadLinetype re-reads the whole file on every call, by design. This benchmark measures, on the
// largest real .lin file, one LoadLinetype (a fresh control each time, so that the linetype is
// really loaded: file opened, read whole, decoded, searched, the row inserted) against one plain
// read of the same file into memory, in one run, and prints the ratio (the aim is at most 3). It also
// draws the sample of a definition line of 8 000 characters against the sample of its first 8 (the
// same dash and gap): the walk's cost per stroke does not grow with the line.
#include <cstdio>
#include <filesystem>
#include <vector>

#include "BenchSupport.h"
#include "CKivLinetypeCtrl.h"
#include "CountingDC.h"
#include "IKivControlSite.h"
#include "KivLinetypeSample.h"

namespace {

std::string g_file;


// The last header of the file, so that the search runs through the whole content.
KivString lastHeaderName(const std::string& path) {
    std::FILE* f = std::fopen(path.c_str(), "rb");
    std::string bytes;
    char buffer[4096];
    std::size_t n = 0;
    while (f != nullptr && (n = std::fread(buffer, 1, sizeof buffer, f)) > 0) bytes.append(buffer, n);
    if (f != nullptr) std::fclose(f);
    const std::size_t star = bytes.rfind("\n*");
    const std::size_t comma = bytes.find(',', star);
    return KivString(bytes.substr(star + 2, comma - star - 2).c_str());
}

void PlainRead(benchmark::State& state) {
    for (auto _ : state) {
        std::FILE* f = std::fopen(g_file.c_str(), "rb");
        std::fseek(f, 0, SEEK_END);
        const long length = std::ftell(f);
        std::fseek(f, 0, SEEK_SET);
        std::vector<char> bytes(static_cast<std::size_t>(length));
        const std::size_t got = std::fread(bytes.data(), 1, bytes.size(), f);
        std::fclose(f);
        benchmark::DoNotOptimize(got);
        benchmark::DoNotOptimize(bytes.data());
    }
    state.SetBytesProcessed(static_cast<long long>(state.iterations()) * static_cast<long long>(std::filesystem::file_size(g_file)));
}

void LoadLinetype(benchmark::State& state) {
    const std::filesystem::path path(g_file);
    const KivString folder(path.parent_path().u8string().c_str());
    const KivString file(path.filename().u8string().c_str());
    const KivString name = lastHeaderName(g_file);
    KivNullControlSite site;
    for (auto _ : state) {
        CKivLinetypeCtrl control(site);
        control.SetSupportPath(folder);
        control.SetLinetypeFile(file);
        control.LoadLinetype(name);
        if (control.items().getLogicalLength() != 4) state.SkipWithError("the linetype did not load");
        benchmark::DoNotOptimize(control.items()[3].definition.length());
    }
    state.SetBytesProcessed(static_cast<long long>(state.iterations()) * static_cast<long long>(std::filesystem::file_size(g_file)));
}

// A sample 200 pixels wide of a dash-and-gap line, written once or a thousand times over.
void Sample(benchmark::State& state) {
    std::u16string definition = u"A,";
    for (long i = 0; i < state.range(0); ++i) definition += u"0.2,-0.1,";
    definition.pop_back();
    const KivString text(definition);
    for (auto _ : state) {
        CountingDC dc;
        benchmark::DoNotOptimize(KivStrokeLinetypeSample(dc, text, 0, 200.0));
    }
}

}  // namespace

int main(int argc, char** argv) {
    g_file = kivLargestSharedFile("lin");
    if (g_file.empty()) {
        std::fprintf(stderr, "no .lin file found\n");
        return 1;
    }
    std::printf("file: %s (%ju bytes)\n", g_file.c_str(), static_cast<std::uintmax_t>(std::filesystem::file_size(g_file)));
    benchmark::RegisterBenchmark("PlainRead", PlainRead);
    benchmark::RegisterBenchmark("LoadLinetype", LoadLinetype);
    benchmark::RegisterBenchmark("SampleOfAShortLine", Sample)->Arg(1);
    benchmark::RegisterBenchmark("SampleOfALongLine", Sample)->Arg(1000);
    benchmark::Initialize(&argc, argv);
    KivRatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const double read = reporter.time("PlainRead"), load = reporter.time("LoadLinetype");
    if (read > 0 && load > 0)
        std::printf("LoadLinetype / plain read: %.2f (aim: at most 3)\n", load / read);
    const double shortLine = reporter.time("SampleOfAShortLine/1"), longLine = reporter.time("SampleOfALongLine/1000");
    if (shortLine > 0 && longLine > 0)
        std::printf("sample of an 8 000-character line / of its 8-character form: %.2f\n", longLine / shortLine);
    return 0;
}
