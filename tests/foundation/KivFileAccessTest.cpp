// KivFileAccess: read-only whole-file reading, encoding type 1 and byte-order marks.
#include <gtest/gtest.h>

#include <memory>

#include "KivFileAccess.h"
#include "TestFiles.h"

namespace {
KivString readAll(const KivString& path, KivFileAccess::encodeType type = KivFileAccess::eAnsi) {
    KivFileAccess file(path, KivString(u"r"), type);
    KivString content;
    const long length = file.getFileLength();
    if (length > 0) file.readFile(content, static_cast<std::size_t>(length));
    file.close();
    return content;
}
}  // namespace

TEST(KivFileAccess, MissingFileIsNotOpenAndReadsNothing) {
    KivFileAccess file(KivString(u"no-such-folder/no-such-file.lin"), KivString(u"r"), KivFileAccess::eAnsi);
    EXPECT_EQ(file.isOpen(), 0);
    EXPECT_EQ(file.getFileLength(), 0);
    KivString out(u"untouched?");
    EXPECT_EQ(file.readFile(out, 10), 0u);
    EXPECT_EQ(out.length(), 0);
    file.close();
    file.close();  // closing twice is harmless
}

TEST(KivFileAccess, EmptyPathIsNotOpen) {
    KivFileAccess file(KivString(), KivString(u"r"), KivFileAccess::eAnsi);
    EXPECT_EQ(file.isOpen(), 0);
}

TEST(KivFileAccess, ReadsWholeFileByteForByteKeepingCarriageReturns) {
    TempFile tmp(std::string(";c\r\n*DASHED,x\r\nA,12.7,-6.35\r\n"));
    KivFileAccess file(tmp.path(), KivString(u"r"), KivFileAccess::eAnsi);
    ASSERT_NE(file.isOpen(), 0);
    EXPECT_EQ(file.getFileLength(), 29);
    KivString content;
    EXPECT_EQ(file.readFile(content, 29), 29u);
    EXPECT_EQ(content, KivString(u";c\r\n*DASHED,x\r\nA,12.7,-6.35\r\n"));
}

TEST(KivFileAccess, ReadsOnlyTheCountGiven) {
    TempFile tmp(std::string("abcdef"));
    KivFileAccess file(tmp.path(), KivString(u"r"), KivFileAccess::eAnsi);
    KivString content;
    EXPECT_EQ(file.readFile(content, 3), 3u);
    EXPECT_EQ(content, KivString(u"abc"));
    EXPECT_EQ(file.readFile(content, 100), 6u);  // always from the start, at most the file
    EXPECT_EQ(content, KivString(u"abcdef"));
}

TEST(KivFileAccess, EmptyFileHasLengthZero) {
    TempFile tmp{std::string()};
    KivFileAccess file(tmp.path(), KivString(u"r"), KivFileAccess::eAnsi);
    EXPECT_NE(file.isOpen(), 0);
    EXPECT_EQ(file.getFileLength(), 0);
}

TEST(KivFileAccess, TypeOneMapsEveryByteToTheSameCodeUnit) {
    std::string all;
    for (int b = 1; b < 256; ++b) all.push_back(static_cast<char>(b));
    // Start with a byte that cannot begin a byte-order mark.
    TempFile tmp(all);
    const KivString content = readAll(tmp.path());
    ASSERT_EQ(content.length(), 255);
    for (int i = 0; i < 255; ++i) EXPECT_EQ(content.at(i), i + 1);
}

TEST(KivFileAccess, Utf8ByteOrderMarkIsDroppedAndTheRestDecodedAsUtf8) {
    TempFile tmp(std::string("\xEF\xBB\xBF*CAF\xC3\x89,x\n"));
    EXPECT_EQ(readAll(tmp.path()), KivString(u"*CAF\u00c9,x\n"));
}

TEST(KivFileAccess, Utf16LittleEndianByteOrderMarkIsDecoded) {
    TempFile tmp(std::string("\xFF\xFE*\0A\0,\0\x20\x20\n\0", 12));
    EXPECT_EQ(readAll(tmp.path()), KivString(u"*A,\u2020\n"));
}

TEST(KivFileAccess, Utf16BigEndianByteOrderMarkIsDecoded) {
    TempFile tmp(std::string("\xFE\xFF\0*\0A", 6));
    EXPECT_EQ(readAll(tmp.path()), KivString(u"*A"));
}

TEST(KivFileAccess, ExplicitUtf8AndUtf16Types) {
    TempFile utf8(std::string("\xE2\x82\xAC"));
    EXPECT_EQ(readAll(utf8.path(), KivFileAccess::eUtf8), KivString(u"\u20ac"));
    TempFile utf16(std::string("A\0B\0C", 5));  // odd last byte ignored
    EXPECT_EQ(readAll(utf16.path(), KivFileAccess::eUtf16LE), KivString(u"AB"));
}

TEST(KivFileAccess, WriteModesAreRefusedAndNothingIsWritten) {
    TempFile tmp(std::string("keep"));
    for (const char16_t* mode : {u"w", u"a", u"r+", u"wb"}) {
        KivFileAccess file(tmp.path(), KivString(mode), KivFileAccess::eAnsi);
        EXPECT_EQ(file.isOpen(), 0);
    }
    EXPECT_EQ(readAll(tmp.path()), KivString(u"keep"));
}

TEST(KivFileAccess, DeletesThroughBasePointerAndClosesOnDestruction) {
    // A class derived by a user of the library, deleted through a base pointer: its own destructor
    // runs (the destructor is virtual) and the file is closed by the base's.
    struct Derived : KivFileAccess {
        Derived(const KivString& path, bool& destroyed)
            : KivFileAccess(path, KivString(u"r"), KivFileAccess::eAnsi), m_destroyed(destroyed) {}
        ~Derived() override { m_destroyed = true; }
        bool& m_destroyed;
    };
    TempFile tmp(std::string("x"));
    bool destroyed = false;
    std::unique_ptr<KivFileAccess> file(new Derived(tmp.path(), destroyed));
    ASSERT_NE(file->isOpen(), 0);
    EXPECT_TRUE(fileIsOpenInThisProcess(tmp));
    file.reset();
    EXPECT_TRUE(destroyed);
    EXPECT_FALSE(fileIsOpenInThisProcess(tmp));
}

TEST(KivFileAccess, ReadsARealLinetypeFileInPlace) {
    const KivString content = readAll(sharedDataPath("lin/lsw-acad__LSW.LIN"));
    EXPECT_EQ(content.length(), 210);
    EXPECT_GT(content.find(KivString(u"*"), 0), -1);
}

TEST(KivFileAccess, ReadsARealPatternFileInPlace) {
    const KivString content = readAll(sharedDataPath("pat/qcad__imperial_ansi31.pat"));
    EXPECT_EQ(content.length(), 31);
    EXPECT_EQ(content.find(KivString(u"*ANSI31"), 0), 0);
}

TEST(KivFileAccess, AFolderIsNotAFileToRead) {
    TempFile tmp(std::string("x"));
    KivFileAccess folder(tmp.folder(), KivString(u"r"), KivFileAccess::eAnsi);
    EXPECT_EQ(folder.isOpen(), 0);
    EXPECT_EQ(folder.getFileLength(), 0);
    KivFileAccess folderWithSeparator(tmp.folder() + KivString(u"\\"), KivString(u"r"), KivFileAccess::eAnsi);
    EXPECT_EQ(folderWithSeparator.isOpen(), 0);
}

TEST(KivFileAccess, ABackslashSeparatesFoldersOnEveryPlatform) {
    TempFile tmp(std::string("content"), "sep.lin");
    KivFileAccess file(tmp.folder() + KivString(u"\\sep.lin"), KivString(u"r"), KivFileAccess::eAnsi);
    ASSERT_NE(file.isOpen(), 0);
    EXPECT_EQ(file.getFileLength(), 7);
}

TEST(KivFileAccess, DevicesAreNotFilesToRead) {
#if defined(_WIN32)
    // A device name would block a read (CON waits for the keyboard): it is refused.
    for (const char16_t* device : {u"NUL", u"CON", u"C:\\Folder\\CON", u"\\\\.\\NUL"}) {
        KivFileAccess file(KivString(device), KivString(u"r"), KivFileAccess::eAnsi);
        EXPECT_EQ(file.isOpen(), 0) << KivString(device).toUtf8();
    }
#else
    for (const char16_t* device : {u"/dev/null", u"/dev/zero", u"/proc/self"}) {
        KivFileAccess file(KivString(device), KivString(u"r"), KivFileAccess::eAnsi);
        EXPECT_EQ(file.isOpen(), 0) << KivString(device).toUtf8();
    }
#endif
}
