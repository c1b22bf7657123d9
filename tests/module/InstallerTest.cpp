// The installer under Wine, in a prefix where no other test registers the module (KIV_PREFIX=clean):
// msiexec /i writes exactly what regsvr32 of the installed file writes, puts the package's files in
// Program Files\KivLorqControls and a control is then created by its ProgID from there; msiexec /x
// leaves the registry (the classes root, and HKLM\Software and HKCU\Software, where the installer
// keeps its records of the product) and the disk as they were. Over a registration that regsvr32 made from another
// folder, the installation takes every class over and the uninstallation removes them all.
#include <gtest/gtest.h>
#include <windows.h>

#include <set>
#include <string>
#include <vector>

#include "KivCom.h"
#include "RegistrySnapshot.h"

namespace {

std::wstring windowsPath(const wchar_t* path) {
    std::wstring p = std::wstring(L"Z:") + path;
    for (wchar_t& c : p)
        if (c == L'/') c = L'\\';
    return p;
}
const std::wstring kMsi = windowsPath(KIV_PACKAGE_MSI_W);
const std::wstring kPackage = windowsPath(KIV_PACKAGE_DIR_W);

// The package's files, as the installer puts them under its folder.
const wchar_t* const kFiles[] = {L"KivLorqControls8x64.ocx", L"KivLorqControls8x64.tlb", L"KivLorqControls8x64.manifest",
                                 L"SHA256SUMS", L"include\\KivLorqControls.h", L"docs\\hosting.md", L"docs\\conformance.md"};
const wchar_t* const kProgIds[] = {L"KIVLORQCONTROLS.KivColorCtrl.1",    L"KIVLORQCONTROLS.KivLinetypeCtrl.1",
                                   L"KIVLORQCONTROLS.KivLinetypeListCtrl.1", L"KIVLORQCONTROLS.KivLineweightCtrl.1",
                                   L"KIVLORQCONTROLS.KivHatchCtrl.1",   L"KIVLORQCONTROLS.KivLayerCtrl.1"};
const wchar_t* const kClasses[] = {
    L"{134FFBAD-0ECF-4346-BA9D-1EDC507A8A56}", L"{13C03DB5-8843-4B08-BCA1-F4032586C767}", L"{D15E93F0-B2C2-4728-8484-4E561229776F}",
    L"{632E700B-7FB5-4682-B2F2-BF1D5111058D}", L"{A7D6D7BA-DF9F-4E65-84F6-1239BE58B84A}", L"{6DA7E9FD-46EE-4123-8CBB-9ADCACFB1ED4}",
    L"{2EEDA6B2-2037-4824-8629-9EAA7758E9BF}", L"{DABAFA9E-2B6F-40B0-95BB-373AB4B2FC18}", L"{FC9C7841-BFED-489D-9DB9-49551B27B6EC}",
    L"{FB47E4A7-11D0-4FFE-9EC1-EEF7C8047D13}", L"{6646D52E-EC7D-403B-874A-3AE343EE9A1C}", L"{4ED48E07-66E0-493E-A53B-1B8D8C6B80A3}"};
// The library's path as registration writes it (registry names are case-insensitive: Wine spells the
// key "Typelib").
const wchar_t kLibraryKey[] = L"TypeLib\\{64000C4D-B3B0-460E-85BC-05C90B5ADC21}\\1.0\\409\\win64\\[]";
const std::wstring* libraryPath(const RegistrySnapshot& snapshot) {
    for (const auto& [key, value] : snapshot)
        if (_wcsicmp(key.c_str(), kLibraryKey) == 0) return &value;
    return nullptr;
}

std::string narrow(const std::wstring& w) {
    std::string s;
    for (wchar_t c : w) s.push_back(c < 128 ? static_cast<char>(c) : '?');
    return s;
}

std::wstring environment(const wchar_t* name) {
    wchar_t value[MAX_PATH] = {};
    GetEnvironmentVariableW(name, value, MAX_PATH);
    return value;
}
const std::wstring kInstallDir = environment(L"ProgramFiles") + L"\\KivLorqControls";
const std::wstring kInstalledModule = kInstallDir + L"\\KivLorqControls8x64.ocx";
// A copy registered by regsvr32 from a folder of its own.
const std::wstring kOtherDir = environment(L"SystemDrive") + L"\\KivOtherCopy";
const std::wstring kOtherModule = kOtherDir + L"\\KivLorqControls8x64.ocx";

// Runs a command line to its end; its exit code, or -1 when it cannot start or does not end in 2 minutes.
long run(std::wstring commandLine) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, &commandLine[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) return -1;
    DWORD code = static_cast<DWORD>(-1);
    if (WaitForSingleObject(process.hProcess, 120000) == WAIT_OBJECT_0) GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<long>(code);
}
long msiexec(const wchar_t* action) { return run(std::wstring(L"msiexec.exe ") + action + L" \"" + kMsi + L"\" /qn"); }
long regsvr32(const std::wstring& flags, const std::wstring& module) {
    return run(L"regsvr32.exe " + flags + L" \"" + module + L"\"");
}

// Every file and folder where an installer writes: Program Files (both), the machine's program data
// and the installer's own cache in the Windows folder.
void listFiles(const std::wstring& dir, std::set<std::wstring>& out) {
    WIN32_FIND_DATAW found;
    HANDLE find = FindFirstFileW((dir + L"\\*").c_str(), &found);
    if (find == INVALID_HANDLE_VALUE) return;
    do {
        const std::wstring name = found.cFileName;
        if (name == L"." || name == L"..") continue;
        const std::wstring path = dir + L"\\" + name;
        if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
            listFiles(path, out);
            out.insert(path + L"\\");
        } else {
            out.insert(path);
        }
    } while (FindNextFileW(find, &found));
    FindClose(find);
}
std::set<std::wstring> diskFiles() {
    std::set<std::wstring> files;
    for (const std::wstring& dir : {environment(L"ProgramFiles"), environment(L"ProgramFiles(x86)"),
                                    environment(L"ProgramData"), environment(L"windir") + L"\\Installer"})
        listFiles(dir, files);
    return files;
}
std::vector<std::string> diskDifferences(const std::set<std::wstring>& a, const std::set<std::wstring>& b) {
    std::vector<std::string> lines;
    for (const std::wstring& f : a)
        if (b.count(f) == 0) lines.push_back("- " + narrow(f));
    for (const std::wstring& f : b)
        if (a.count(f) == 0) lines.push_back("+ " + narrow(f));
    return lines;
}

bool readFile(const std::wstring& path, std::string& out) {
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    out.clear();
    char buffer[65536];
    DWORD n = 0;
    while (ReadFile(file, buffer, sizeof buffer, &n, nullptr) && n > 0) out.append(buffer, n);
    CloseHandle(file);
    return true;
}

// The records the installer keeps of its products (Installer\...) are not registration.
bool installerRecord(const std::wstring& key) { return _wcsnicmp(key.c_str(), L"Installer\\", 10) == 0; }
// Wine's installer creates the folders of its own records the first time it installs anything and
// keeps them, empty, when the last product is removed: four keys under the classes root (seen in
// HKEY_CLASSES_ROOT and in HKLM\Software\Classes) and five under
// HKLM\Software\Microsoft\Windows\CurrentVersion\Installer. Only these keys themselves are passed
// over: a value in one of them, or a key of a product inside, is still a difference.
bool installerFolder(const std::wstring& key) {
    const wchar_t* const classes[] = {L"Installer\\", L"Installer\\Features\\", L"Installer\\Products\\",
                                      L"Installer\\UpgradeCodes\\"};
    const wchar_t* const machine[] = {L"UpgradeCodes\\", L"UserData\\", L"UserData\\S-1-5-18\\",
                                      L"UserData\\S-1-5-18\\Components\\", L"UserData\\S-1-5-18\\Products\\"};
    const auto within = [&](const wchar_t* root, const auto& folders) {
        const std::size_t n = wcslen(root);
        if (_wcsnicmp(key.c_str(), root, n) != 0) return false;
        for (const wchar_t* folder : folders)
            if (_wcsicmp(key.c_str() + n, folder) == 0) return true;
        return false;
    };
    return within(L"", classes) || within(L"HKLM\\Software\\Classes\\", classes) ||
           within(L"HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\Installer\\", machine);
}

// The product's entry in the machine's list of installed programs (Add/Remove Programs): the value
// `name` of the key Uninstall\{product code} whose DisplayName is KivLorqControls; empty without one.
std::wstring uninstallEntry(const RegistrySnapshot& software, const wchar_t* name) {
    const std::wstring uninstall = L"HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";
    for (const auto& [key, value] : software) {
        if (_wcsnicmp(key.c_str(), uninstall.c_str(), uninstall.size()) != 0 || value != L"KivLorqControls") continue;
        const std::size_t product = key.rfind(L"\\[DisplayName]");
        if (product == std::wstring::npos || product + 14 != key.size()) continue;
        const auto entry = software.find(key.substr(0, product) + L"\\[" + name + L"]");
        return entry != software.end() ? entry->second : L"";
    }
    return L"";
}

// What regsvr32 writes for the module at the installed path: the file put there, registered, the
// registry read, unregistered and the file removed again.
RegistrySnapshot registeredByRegsvr32() {
    CreateDirectoryW(kInstallDir.c_str(), nullptr);
    RegistrySnapshot registered;
    if (CopyFileW((kPackage + L"\\KivLorqControls8x64.ocx").c_str(), kInstalledModule.c_str(), FALSE) &&
        regsvr32(L"/s", kInstalledModule) == 0)
        registered = snapshotClassesRoot();
    regsvr32(L"/u /s", kInstalledModule);
    DeleteFileW(kInstalledModule.c_str());
    RemoveDirectoryW(kInstallDir.c_str());
    return registered;
}

class Installer : public ::testing::Test {
protected:
    void SetUp() override {
        CoInitialize(nullptr);
        // Nothing of the module is registered here to begin with (an earlier run that stopped halfway
        // is undone first).
        msiexec(L"/x");
        CLSID clsid{};
        ASSERT_NE(CLSIDFromProgID(kProgIds[0], &clsid), S_OK) << "the module is registered in this prefix";
    }
    void TearDown() override {
        // The prefix as it was found, whatever failed: nothing installed, nothing registered.
        CoFreeUnusedLibraries();
        msiexec(L"/x");
        regsvr32(L"/u /s", kOtherModule);
        DeleteFileW(kOtherModule.c_str());
        RemoveDirectoryW(kOtherDir.c_str());
        CoUninitialize();
    }
};

}  // namespace

TEST_F(Installer, WritesWhatRegsvr32WritesAndUninstallsToNothing) {
    const RegistrySnapshot before = snapshotClassesRoot();
    const RegistrySnapshot softwareBefore = snapshotSoftware();
    const std::set<std::wstring> filesBefore = diskFiles();
    const RegistrySnapshot byRegsvr32 = registeredByRegsvr32();
    ASSERT_FALSE(byRegsvr32.empty()) << "regsvr32 failed";
    ASSERT_NE(libraryPath(byRegsvr32), nullptr);
    EXPECT_EQ(snapshotDifferences(before, snapshotClassesRoot()), std::vector<std::string>{}) << "regsvr32 /u left this";

    ASSERT_EQ(msiexec(L"/i"), 0);
    const RegistrySnapshot installed = snapshotClassesRoot();
    EXPECT_EQ(snapshotDifferences(byRegsvr32, installed, &installerRecord), std::vector<std::string>{});
    // The installer's records of the product, beside the registration: the machine's list of
    // installed programs names it with its version (and Installer\UserData holds its components).
    const RegistrySnapshot softwareInstalled = snapshotSoftware();
    EXPECT_EQ(narrow(uninstallEntry(softwareInstalled, L"DisplayVersion")), narrow(KIV_VERSION_W));
    // The package's files, byte for byte.
    for (const wchar_t* file : kFiles) {
        std::string installedBytes, packagedBytes;
        ASSERT_TRUE(readFile(kInstallDir + L"\\" + file, installedBytes)) << narrow(file);
        ASSERT_TRUE(readFile(kPackage + L"\\" + file, packagedBytes)) << narrow(file);
        EXPECT_TRUE(installedBytes == packagedBytes) << narrow(file);
    }
    // Each control created by its ProgID, from the installed file.
    for (const wchar_t* progId : kProgIds) {
        SCOPED_TRACE(narrow(progId));
        CLSID clsid{};
        ASSERT_EQ(CLSIDFromProgID(progId, &clsid), S_OK);
        KivComPtr<IDispatch> control;
        ASSERT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, control.putVoid()), S_OK);
        wchar_t loaded[MAX_PATH] = {};
        GetModuleFileNameW(GetModuleHandleW(L"KivLorqControls8x64.ocx"), loaded, MAX_PATH);
        EXPECT_EQ(_wcsicmp(loaded, kInstalledModule.c_str()), 0) << narrow(loaded);
    }
    CoFreeUnusedLibraries();

    ASSERT_EQ(msiexec(L"/x"), 0);
    EXPECT_EQ(snapshotDifferences(before, snapshotClassesRoot(), &installerFolder), std::vector<std::string>{});
    // Nothing of the product stays in the machine's or the user's software keys either: no entry in
    // the list of installed programs, no record in Installer\UserData, Products or UpgradeCodes.
    EXPECT_EQ(snapshotDifferences(softwareBefore, snapshotSoftware(), &installerFolder), std::vector<std::string>{});
    EXPECT_EQ(diskDifferences(filesBefore, diskFiles()), std::vector<std::string>{});
}

TEST_F(Installer, TakesOverARegistrationFromAnotherFolderAndRemovesItOnUninstall) {
    const RegistrySnapshot before = snapshotClassesRoot();
    CreateDirectoryW(kOtherDir.c_str(), nullptr);
    ASSERT_TRUE(CopyFileW((kPackage + L"\\KivLorqControls8x64.ocx").c_str(), kOtherModule.c_str(), FALSE));
    ASSERT_EQ(regsvr32(L"/s", kOtherModule), 0);
    const RegistrySnapshot registeredElsewhere = snapshotClassesRoot();

    ASSERT_EQ(msiexec(L"/i"), 0);
    const RegistrySnapshot installed = snapshotClassesRoot();
    // Every class and the library name the installed file now.
    for (const wchar_t* clsid : kClasses) {
        const auto it = installed.find(std::wstring(L"CLSID\\") + clsid + L"\\InprocServer32\\[]");
        ASSERT_NE(it, installed.end()) << narrow(clsid);
        EXPECT_EQ(narrow(it->second), narrow(kInstalledModule)) << narrow(clsid);
    }
    ASSERT_NE(libraryPath(installed), nullptr);
    EXPECT_EQ(narrow(*libraryPath(installed)), narrow(kInstalledModule));

    // Uninstalling removes the registration, the other folder's with it.
    ASSERT_EQ(msiexec(L"/x"), 0);
    EXPECT_EQ(snapshotDifferences(before, snapshotClassesRoot(), &installerFolder), std::vector<std::string>{});
    CLSID clsid{};
    EXPECT_NE(CLSIDFromProgID(kProgIds[0], &clsid), S_OK);
    // regsvr32 of the other copy registers it again, as it was.
    ASSERT_EQ(regsvr32(L"/s", kOtherModule), 0);
    EXPECT_EQ(snapshotDifferences(registeredElsewhere, snapshotClassesRoot(), &installerFolder), std::vector<std::string>{});
    EXPECT_EQ(regsvr32(L"/u /s", kOtherModule), 0);
    DeleteFileW(kOtherModule.c_str());
    RemoveDirectoryW(kOtherDir.c_str());
    EXPECT_EQ(snapshotDifferences(before, snapshotClassesRoot(), &installerFolder), std::vector<std::string>{});
}
