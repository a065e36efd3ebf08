// marnoquill-doc's writing commands as a user runs them: files made, merged and given
// attributes, read back by the same program.
#include "common/DocRun.h"
#include "common/TiffWriter.h"
#include "library/LibraryFixture.h"

TEST_F(LibraryTest, CommandLineMakesMergesAndLabelsDocuments)
{
    const QImage page = Strokes(QSize(400, 500), false);
    ASSERT_TRUE(tiffwriter::Write(Path("two.tif"), {page, page}, tiffwriter::Kind::BilevelG4, 100));
    ASSERT_TRUE(Strokes(QSize(300, 300), true).save(Path("photo.jpg")));

    EXPECT_EQ(RunDoc({"create", Path("a.xdw"), Path("two.tif"), Path("photo.jpg")}).code, 0);
    EXPECT_EQ(RunDoc({"create", Path("b.xdw"), Path("photo.jpg"), "--compress", "lossless"}).code, 0);
    DocOutcome info = RunDoc({"info", Path("a.xdw")});
    EXPECT_TRUE(info.out.startsWith(QStringLiteral("pages: 3\n"))) << info.out.toStdString();
    EXPECT_TRUE(info.out.contains(QStringLiteral("page 1: 101.60 x 127.00 mm, 100 x 100 dpi, image")));

    EXPECT_EQ(RunDoc({"merge", Path("m.xdw"), Path("a.xdw"), Path("b.xdw")}).code, 0);
    EXPECT_TRUE(RunDoc({"info", Path("m.xdw")}).out.startsWith(QStringLiteral("pages: 4\n")));

    EXPECT_EQ(RunDoc({"attr", Path("m.xdw"), "件名", "月次報告", "String"}).code, 0);
    EXPECT_EQ(RunDoc({"attr", Path("m.xdw"), "版", "3", "Integer"}).code, 0);
    EXPECT_EQ(RunDoc({"attr", Path("m.xdw"), "件名"}).out, QStringLiteral("月次報告\n"));
    EXPECT_EQ(RunDoc({"attr", Path("m.xdw")}).out, QStringLiteral("件名\n版\n"));

    // Failures are one line with the library's number and text, and exit code 1.
    const DocOutcome exists = RunDoc({"merge", Path("m.xdw"), Path("a.xdw")});
    EXPECT_EQ(exists.code, 1);
    EXPECT_EQ(exists.err, QStringLiteral("marnoquill-doc: error 6300: MergeXdwDocument : ") + Path("m.xdw")
                              + QStringLiteral("が既に存在しています。\n"));
    const DocOutcome badType = RunDoc({"attr", Path("m.xdw"), "版", "x", "Integer"});
    EXPECT_EQ(badType.code, 1);
    EXPECT_TRUE(badType.err.contains(QStringLiteral("TypeがIntegerの場合Valueは数値で設定してください。")));
    EXPECT_EQ(RunDoc({"create", Path("c.xdw")}).code, 1);
}
