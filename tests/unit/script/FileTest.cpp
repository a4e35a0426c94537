// The `file` object on a temporary folder.

#include <QFileInfo>
#include <QTemporaryDir>

#include "ScriptFixture.h"

namespace {

class File : public autoscene::test::ScriptFixture {
protected:
    // `code` with every "%D" replaced by the temporary folder.
    QString at(QString code) { return text(code.replace("%D", dir.path())); }
    QString contents(const QString& name) {
        return QString::fromUtf8(autoscene::test::readFile(dir.filePath(name)));
    }

    QTemporaryDir dir;
};

TEST_F(File, WriteReplacesUnlessAskedToAppend) {
    EXPECT_EQ(at("[file.write('%D/a.txt', 'first line\\nsecond ü'),"
                 " file.write('%D/a.txt', 'one\\ntwo\\nthree')].join()"),
              "true,true");
    EXPECT_EQ(contents("a.txt"), "one\ntwo\nthree");
    EXPECT_EQ(at("file.write('%D/a.txt', '\\nfour ü', true)"), "true");
    EXPECT_EQ(at("file.read('%D/a.txt')"), "one\ntwo\nthree\nfour ü");
    EXPECT_EQ(at("[3, 0, 4, -1].map(n => file.readLine('%D/a.txt', n)).join('|')"), "four ü|one||");
    EXPECT_EQ(at("file.read('%D/none.txt') + file.readLine('%D/none.txt', 0)"), "");
    EXPECT_EQ(at("file.write('%D/no/such/folder/a.txt', 'x')"), "false");
}

TEST_F(File, TouchMkdirListAndRemove) {
    EXPECT_EQ(at("[file.write('%D/kept.txt', 'kept'), file.touch('%D/kept.txt'),"
                 " file.touch('%D/new.txt'), file.mkdir('%D/x/y/z'),"
                 " file.touch('%D/x/y/z/deep.txt')].join()"),
              "true,true,true,true,true");
    EXPECT_EQ(contents("kept.txt"), "kept");  // touching an existing file changes nothing
    EXPECT_EQ(at("file.listFile('%D').sort().join()"), "kept.txt,new.txt,x");
    EXPECT_EQ(at("file.listFile('%D/missing').length"), "0");

    // The folder goes recursively; a file removed is not there to remove again.
    EXPECT_EQ(at("[file.remove('%D/x'), file.remove('%D/new.txt'), file.remove('%D/new.txt'),"
                 " file.remove('')].join()"),
              "true,true,false,false");
    EXPECT_FALSE(QFileInfo::exists(dir.filePath("x")));
}

TEST_F(File, CopyRenameAndMove) {
    at("file.write('%D/src.txt', 'source')");
    EXPECT_EQ(at("file.copy('%D/src.txt', '%D/copy.txt')"), "true");
    EXPECT_EQ(contents("copy.txt"), "source");
    EXPECT_EQ(at("file.copy('%D/missing.txt', '%D/other.txt')"), "false");

    // An existing target, file or folder, is replaced.
    at("file.write('%D/old.txt', 'old')");
    EXPECT_EQ(at("file.rename('%D/copy.txt', '%D/old.txt')"), "true");
    EXPECT_EQ(contents("old.txt"), "source");
    at("file.mkdir('%D/folder/inner')");
    EXPECT_EQ(at("file.move('%D/old.txt', '%D/folder')"), "true");
    EXPECT_EQ(contents("folder"), "source");

    // A name differing only in case is the source itself on a case-blind file system:
    // the source is never removed as the "existing" target.
    EXPECT_EQ(at("file.rename('%D/src.txt', '%D/SRC.txt')"), "true");
    EXPECT_EQ(contents("SRC.txt"), "source");
    EXPECT_EQ(at("file.rename('%D/missing.txt', '%D/folder')"), "false");
    EXPECT_EQ(contents("folder"), "source");
}

}  // namespace
