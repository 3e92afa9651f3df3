#include <gtest/gtest.h>

#include "TestSupport.h"
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "frame/DateMath.h"
#include "system/FileSystem.h"
#include "system/PathMapping.h"

namespace qvt {
namespace {

// Each test runs in a fresh temporary directory, which is also the current
// directory and the drive root, so "C:\x" and "x" name files inside it.
class Files : public ::testing::Test {
protected:
    void SetUp() override {
        char tmpl[] = "/tmp/qvt-files-XXXXXX";
        ASSERT_NE(::mkdtemp(tmpl), nullptr);
        dir_ = tmpl;
        char buf[4096];
        ASSERT_NE(::getcwd(buf, sizeof buf), nullptr);
        oldCwd_ = buf;
        ASSERT_EQ(::chdir(dir_.c_str()), 0);
        ::setenv("QVT_DRIVE_ROOT", dir_.c_str(), 1);
    }
    void TearDown() override {
        CloseAll();
        ::unsetenv("QVT_DRIVE_ROOT");
        ASSERT_EQ(::chdir(oldCwd_.c_str()), 0);
        std::string cmd = "rm -rf '" + dir_ + "'";
        ASSERT_EQ(std::system(cmd.c_str()), 0);
    }
    void write(const std::string& name, const std::string& bytes) {
        std::ofstream(dir_ + "/" + name, std::ios::binary) << bytes;
    }
    std::string read(const std::string& name) {
        std::ifstream in(dir_ + "/" + name, std::ios::binary);
        std::stringstream ss;
        ss << in.rdbuf();
        return ss.str();
    }
    bool exists(const std::string& name) {
        struct stat st;
        return ::stat((dir_ + "/" + name).c_str(), &st) == 0;
    }
    std::string dir_, oldCwd_;
};

using qvt::test::errorOf;

TEST_F(Files, LineInputEndsAtCrOrCrLfButNotAtLf) {
    write("in.txt", "one\r\ntwo\rthree\nstill three\r\n\r\nlast");
    Open(u"in.txt", OpenMode::Input, OpenAccess::Read, OpenLock::Shared, 1);
    EXPECT_EQ(LineInput(1), u"one");
    EXPECT_EQ(LineInput(1), u"two");
    EXPECT_EQ(LineInput(1), u"three\nstill three");
    EXPECT_EQ(LineInput(1), u"");
    EXPECT_FALSE(Eof(1));
    EXPECT_EQ(LineInput(1), u"last");
    EXPECT_TRUE(Eof(1));
    EXPECT_EQ(errorOf([] { LineInput(1); }), errInputPastEnd);
}

TEST_F(Files, TextIsAnsiBothWays) {
    write("ansi.txt", std::string("caf\xE9 \x80\x96\r\n", 8));
    Open(u"ansi.txt", OpenMode::Input, OpenAccess::Default, OpenLock::Default, 1);
    EXPECT_EQ(LineInput(1), u"caf\u00e9 \u20ac\u2013");
    Close(1);
    Open(u"out.txt", OpenMode::Output, OpenAccess::Write, OpenLock::LockWrite, 2);
    PrintText(2, u"\u00e9\u20ac\u0100", true);
    Close(2);
    EXPECT_EQ(read("out.txt"), std::string("\xE9\x80?\r\n"));
}

TEST_F(Files, PrintWritesCrLfUnlessTheListEndsInASeparator) {
    Open(u"p.txt", OpenMode::Output, OpenAccess::Write, OpenLock::LockWrite, 1);
    const PrintItem a[] = {{Variant(u"a"), u';'}, {Variant(int16_t(5)), u';'}, {Variant(int16_t(-2)), 0}};
    PrintFile(1, a);
    const PrintItem b[] = {{Variant(u"x"), u','}, {Variant(u"y"), u';'}};
    PrintFile(1, b);
    PrintFile(1, {});
    const PrintItem c[] = {{Variant(true), 0}, {Variant::null(), 0}};
    PrintFile(1, std::span(c, 1));
    PrintFile(1, std::span(c + 1, 1));
    Close(1);
    EXPECT_EQ(read("p.txt"), "a 5 -2 \r\nx             y\r\nTrue\r\nNull\r\n");
}

TEST_F(Files, OutputTruncatesAndAppendAdds) {
    write("log.txt", "old contents");
    Open(u"log.txt", OpenMode::Output, OpenAccess::Default, OpenLock::Default, 1);
    PrintText(1, u"new", true);
    Close(1);
    Open(u"LOG.TXT", OpenMode::Append, OpenAccess::Write, OpenLock::LockWrite, 1);
    PrintText(1, u"more", true);
    EXPECT_EQ(LOF(1), 11);
    Close(1);
    EXPECT_EQ(read("log.txt"), "new\r\nmore\r\n");
}

TEST_F(Files, BinaryGetPutAtBytePositions) {
    write("b.bin", std::string("0123456789", 10));
    Open(u"b.bin", OpenMode::Binary, OpenAccess::Default, OpenLock::Default, 3);
    Variant buf(u"    ");
    Get(3, 3, buf);
    EXPECT_EQ(buf.asString(), u"2345");
    EXPECT_EQ(Loc(3), 6);
    EXPECT_EQ(Seek(3), 7);
    Put(3, 2, Variant(u"\u00e9b"));
    Put(3, 0, Variant(int16_t(0x4142)));  // at the current position, little-endian
    Put(3, 13, Variant(u"z"));            // past the end: the gap is zeros
    EXPECT_EQ(LOF(3), 13);
    Close(3);
    EXPECT_EQ(read("b.bin"), std::string("0\xE9" "bBA56789\0\0z", 13));
}

TEST_F(Files, BinaryReadPastTheEndSetsEofAndKeepsCounting) {
    write("short.bin", "abc");
    Open(u"short.bin", OpenMode::Binary, OpenAccess::Read, OpenLock::Shared, 1);
    Variant block(String(5, u' '));
    EXPECT_FALSE(Eof(1));
    Get(1, 0, block);
    EXPECT_EQ(block.asString(), String(u"abc\0\0", 5));
    EXPECT_TRUE(Eof(1));
    // The block-reading rule: what was really read is size - Loc + LOF.
    EXPECT_EQ(5 - Loc(1) + LOF(1), 3);
    EXPECT_EQ(errorOf([] { Put(1, 1, Variant(u"x")); }), errPathFileAccess);
    Variant arr = Variant::array(vbByte, {{0, 1}});
    Get(1, 2, arr);
    EXPECT_EQ(arr.asArray().elements()[0].asByte(), 'b');
    EXPECT_EQ(arr.asArray().elements()[1].asByte(), 'c');
}

TEST_F(Files, FileNumberTableRules) {
    EXPECT_EQ(FreeFile(), 1);
    EXPECT_EQ(FreeFile(1), 256);
    write("a.txt", "x");
    Open(u"a.txt", OpenMode::Input, OpenAccess::Read, OpenLock::Shared, 1);
    EXPECT_EQ(FreeFile(), 2);
    EXPECT_EQ(errorOf([] { Open(u"a.txt", OpenMode::Input, OpenAccess::Read, OpenLock::Shared, 1); }),
              errFileAlreadyOpen);
    Open(u"a.txt", OpenMode::Binary, OpenAccess::Read, OpenLock::Shared, 2);  // readers share
    EXPECT_EQ(errorOf([] { Open(u"a.txt", OpenMode::Output, OpenAccess::Write, OpenLock::LockWrite, 3); }),
              errFileAlreadyOpen);
    EXPECT_EQ(read("a.txt"), "x");  // the refused Output did not truncate
    EXPECT_EQ(errorOf([] { Open(u"a.txt", OpenMode::Input, OpenAccess::Read, OpenLock::Shared, 512); }),
              errBadFileNameOrNumber);
    EXPECT_EQ(errorOf([] { LineInput(9); }), errBadFileNameOrNumber);
    Variant v(int16_t(0));
    EXPECT_EQ(errorOf([&] { Get(1, 1, v); }), errBadFileMode);
    CloseAll();
    Open(u"a.txt", OpenMode::Binary, OpenAccess::Write, OpenLock::LockWrite, 1);
    EXPECT_EQ(errorOf([] { Open(u"a.txt", OpenMode::Binary, OpenAccess::Write, OpenLock::Shared, 2); }),
              errPermissionDenied);
    Open(u"a.txt", OpenMode::Binary, OpenAccess::Read, OpenLock::Shared, 2);  // reading is still allowed
    Close(1);
    Close(1);  // closing a closed number is no error
}

TEST_F(Files, OpenErrors) {
    EXPECT_EQ(errorOf([] { Open(u"missing.txt", OpenMode::Input, OpenAccess::Read, OpenLock::Shared, 1); }),
              errFileNotFound);
    EXPECT_EQ(errorOf([] { Open(u"no\\such\\dir.txt", OpenMode::Output, OpenAccess::Write, OpenLock::Default, 1); }),
              errPathNotFound);
    EXPECT_EQ(errorOf([] { Open(u"a*.txt", OpenMode::Output, OpenAccess::Write, OpenLock::Default, 1); }),
              errBadFileNameOrNumber);
    MkDir(u"sub");
    EXPECT_EQ(errorOf([] { Open(u"sub", OpenMode::Input, OpenAccess::Read, OpenLock::Default, 1); }),
              errPathFileAccess);
    EXPECT_EQ(errorOf([] { Open(u"x", OpenMode::Input, OpenAccess::Write, OpenLock::Default, 1); }), errBadFileMode);
}

TEST_F(Files, DirListsWithPatternsAndAttributes) {
    write("b.TXT", "1");
    write("a.txt", "1");
    write("c.bas", "1");
    write("noext", "1");
    write(".hidden", "1");
    MkDir(u"Sub");
    EXPECT_EQ(Dir(u"*.txt"), u"a.txt");
    EXPECT_EQ(Dir(), u"b.TXT");
    EXPECT_EQ(Dir(), u"");
    EXPECT_EQ(errorOf([] { Dir(); }), errInvalidCall);
    std::u16string all;
    for (String n = Dir(u"C:\\*.*"); !n.empty(); n = Dir()) all += n + u"|";
    EXPECT_EQ(all, u"a.txt|b.TXT|c.bas|noext|");
    all.clear();
    for (String n = Dir(u"", vbDirectory | vbHidden); !n.empty(); n = Dir()) all += n + u"|";
    EXPECT_EQ(all, u".|..|.hidden|a.txt|b.TXT|c.bas|noext|Sub|");
    EXPECT_EQ(Dir(u"*."), u"noext");
    EXPECT_EQ(Dir(u"?.BAS"), u"c.bas");
    EXPECT_EQ(Dir(u"A.TXT"), u"a.txt");
    // Only * and ? are wildcards: # and [ in a pattern are plain characters.
    write("r#[1].txt", "1");
    EXPECT_EQ(Dir(u"R#[?].*"), u"r#[1].txt");
    EXPECT_EQ(Dir(u"r1*"), u"");
    Kill(u"r#[1].txt");
    EXPECT_EQ(Dir(u"sub"), u"");
    EXPECT_EQ(Dir(u"sub", vbDirectory), u"Sub");
    EXPECT_EQ(Dir(u"nowhere\\*.*"), u"");
    EXPECT_EQ(GetAttr(u"sub"), vbDirectory);
    EXPECT_EQ(GetAttr(u".hidden"), vbHidden);
    SetAttr(u"a.txt", vbReadOnly);
    EXPECT_EQ(GetAttr(u"a.txt"), vbReadOnly);
    EXPECT_EQ(errorOf([] { GetAttr(u"none"); }), errFileNotFound);
}

TEST_F(Files, KillDeletesMatchesAndChecksThemAllFirst) {
    write("k1.tmp", "1");
    write("k2.tmp", "2");
    write("keep.txt", "3");
    Open(u"k2.tmp", OpenMode::Input, OpenAccess::Read, OpenLock::Shared, 1);
    EXPECT_EQ(errorOf([] { Kill(u"*.tmp"); }), errPathFileAccess);
    EXPECT_TRUE(exists("k1.tmp"));  // nothing deleted when one file is open
    Close(1);
    Kill(u"*.TMP");
    EXPECT_FALSE(exists("k1.tmp"));
    EXPECT_FALSE(exists("k2.tmp"));
    EXPECT_TRUE(exists("keep.txt"));
    EXPECT_EQ(errorOf([] { Kill(u"*.tmp"); }), errFileNotFound);
    EXPECT_EQ(errorOf([] { Kill(u"gone.txt"); }), errFileNotFound);
    EXPECT_EQ(errorOf([] { Kill(u"gone\\x.txt"); }), errPathNotFound);
}

TEST_F(Files, FileCopyKeepsDateAndNeverHarmsTheTargetOnFailure) {
    write("src.txt", std::string("a\0b\xFF", 4));
    write("dst.txt", "old");
    FileCopy(u"src.txt", u"C:\\DST.TXT");
    EXPECT_EQ(read("dst.txt"), std::string("a\0b\xFF", 4));
    EXPECT_EQ(FileDateTime(u"dst.txt"), FileDateTime(u"src.txt"));
    EXPECT_EQ(errorOf([] { FileCopy(u"none.txt", u"dst.txt"); }), errFileNotFound);
    EXPECT_EQ(errorOf([] { FileCopy(u"src.txt", u"none\\dst.txt"); }), errPathNotFound);
    EXPECT_EQ(errorOf([] { FileCopy(u"src.txt", u"src.txt"); }), errPermissionDenied);
    Open(u"src.txt", OpenMode::Append, OpenAccess::Write, OpenLock::LockWrite, 1);
    EXPECT_EQ(errorOf([] { FileCopy(u"src.txt", u"dst.txt"); }), errPermissionDenied);
    Close(1);
    EXPECT_EQ(read("dst.txt"), std::string("a\0b\xFF", 4));
    EXPECT_EQ(Dir(u"*.*", vbHidden), u"dst.txt");  // no temporary file left behind
}

TEST_F(Files, NameRenamesWithoutReplacing) {
    write("a.txt", "A");
    write("b.txt", "B");
    EXPECT_EQ(errorOf([] { Name(u"a.txt", u"B.TXT"); }), errFileAlreadyExists);
    EXPECT_EQ(read("b.txt"), "B");
    Name(u"a.txt", u"c.txt");
    EXPECT_EQ(read("c.txt"), "A");
    Name(u"c.txt", u"C.TXT");  // a change of case only
    EXPECT_EQ(Dir(u"c.txt"), u"C.TXT");
    EXPECT_EQ(errorOf([] { Name(u"missing", u"x"); }), errFileNotFound);
    MkDir(u"d");
    Name(u"C.TXT", u"d\\moved.txt");
    EXPECT_EQ(read("d/moved.txt"), "A");
    Open(u"b.txt", OpenMode::Input, OpenAccess::Read, OpenLock::Shared, 1);
    EXPECT_EQ(errorOf([] { Name(u"b.txt", u"e.txt"); }), errPathFileAccess);
}

TEST_F(Files, DirectoriesAndTheCurrentDirectory) {
    MkDir(u"C:\\Work");
    EXPECT_EQ(errorOf([] { MkDir(u"work"); }), errPathFileAccess);
    EXPECT_EQ(errorOf([] { MkDir(u"a\\b"); }), errPathNotFound);
    ChDir(u"\\WORK");
    EXPECT_EQ(CurDir(), u"C:\\Work");
    write("Work/f.txt", "12345");
    EXPECT_EQ(FileLen(u"f.txt"), 5);
    ChDir(u"..");
    EXPECT_EQ(CurDir(u"D"), u"C:\\");
    EXPECT_EQ(errorOf([] { RmDir(u"work"); }), errPathFileAccess);
    Kill(u"work\\f.txt");
    RmDir(u"work");
    EXPECT_EQ(errorOf([] { RmDir(u"work"); }), errPathNotFound);
    EXPECT_EQ(errorOf([] { ChDir(u"nowhere"); }), errPathNotFound);
}

TEST_F(Files, FileDateTimeIsTheLocalModificationTime) {
    write("t.txt", "x");
    const double stamp = FileDateTime(u"t.txt");
    EXPECT_NEAR(stamp, nowAsDate(), 2.0 / 86400);
}

TEST_F(Files, AMissingDriveRootIsADiskNotReady) {
    ::setenv("QVT_DRIVE_ROOT", (dir_ + "/absent").c_str(), 1);
    EXPECT_EQ(errorOf([] { FileLen(u"C:\\x.txt"); }), errDiskNotReady);
    EXPECT_EQ(errorOf([] { Dir(u"C:\\*.*"); }), errDiskNotReady);
}

TEST(PathMapping, TheOneRule) {
    ::setenv("QVT_DRIVE_ROOT", "/srv/dos/", 1);
    EXPECT_EQ(driveRoot(), "/srv/dos");
    EXPECT_EQ(mapPathLiteral(u"C:\\A\\B.TXT"), "/srv/dos/A/B.TXT");
    EXPECT_EQ(mapPathLiteral(u"d:/x"), "/srv/dos/x");
    EXPECT_EQ(mapPathLiteral(u"\\TEMP\\"), "/srv/dos/TEMP/");
    EXPECT_EQ(mapPathLiteral(u"\\\\server\\share\\f"), "/srv/dos/server/share/f");
    EXPECT_EQ(mapPathLiteral(u"/usr/bin"), "/usr/bin");
    EXPECT_EQ(mapPathLiteral(u"..\\X.BAS"), "../X.BAS");
    EXPECT_EQ(mapPathLiteral(u"caf\u00e9"), "caf\xC3\xA9");
    EXPECT_EQ(toDosPath("/srv/dos/a/b"), u"C:\\a\\b");
    EXPECT_EQ(toDosPath("/srv/dos"), u"C:\\");
    EXPECT_EQ(toDosPath("/elsewhere"), u"/elsewhere");
    ::unsetenv("QVT_DRIVE_ROOT");
    EXPECT_EQ(mapPathLiteral(u"C:\\"), "/");
    EXPECT_EQ(toDosPath("/home/u"), u"C:\\home\\u");
    EXPECT_EQ(fromNativeName(toNativeName(u"\U0001F600\xD800x")), u"\U0001F600\xD800x");
}

}  // namespace
}  // namespace qvt
