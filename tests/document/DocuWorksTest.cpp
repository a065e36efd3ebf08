#include "common/PagePicture.h"
#include "document/DocumentTesting.h"
#include "document/DocuWorksClass.h"
#include "document/DocuWorksFileClass.h"

using namespace Qt::Literals::StringLiterals;
using namespace documenttesting;

// Readable failures for the texts compared in every document test.
void PrintTo(const QString& vText, std::ostream* vOut) { *vOut << '"' << vText.toStdString() << '"'; }

namespace {

const QString NotFound = u"問い合わせた情報(インストール情報、属性値など)は存在しません。"_s;

class DocuWorksTest : public DocumentTest {};

} // namespace

TEST_F(DocuWorksTest, OpeningChecksTheEndingTheFileAndTheRuntimesAnswer)
{
    {
        DocuWorksClass dw;
        for (const QString& name : {u"a.XDW"_s, u"a.xct"_s, u"b.xbd"_s})
            EXPECT_NE(dw.OpenXdw(Script(name, 1), 1)->DocumentHandle(), 0) << name.toStdString();
        // Refused before the runtime is asked; a missing file isn't even listed.
        const QString pdf = Script(u"a.pdf"_s, 1);
        EXPECT_EQ(Raised([&] { dw.OpenXdw(pdf, 1); }),
                  u"6300 : OpenXdw : DocuWorks文書以外はオープンできません。 [File="_s + pdf + u']');
        const QString missing = dir.filePath(u"無い.xdw"_s);
        EXPECT_EQ(Raised([&] { dw.OpenXdw(missing, 1); }), u"6300 : OpenXdw : "_s + missing + u"が見つかりません。"_s);
        EXPECT_EQ(engine->Calls(u"OpenDocument"_s), 3);

        // A failed open carries the runtime's text and stays in the list, unopened.
        const QString unknown = Script(u"unknown.xdw"_s, -1);
        EXPECT_EQ(Raised([&] { dw.OpenXdw(unknown, 1); }),
                  u"6300 : OpenXdw : 入力に指定したパスのファイルが見つかりません。 [File="_s + unknown + u']');
        ASSERT_EQ(dw.RefDwFileData()->Count(), 5);
        dw.RefDwFileData()->BottomData();
        EXPECT_EQ(dw.RefDwFile()->DocumentHandle(), 0);
        EXPECT_EQ(dw.RefDwFile()->DwPath(), unknown);
    }
    // Dropping the list closes the three that opened, and only those.
    EXPECT_EQ(engine->Calls(u"CloseSelectedDocument"_s), 3);
    EXPECT_EQ(engine->OpenDocuments(), 0);
}

TEST_F(DocuWorksTest, AFileInUseIsTriedThirtyTimesWaitingFromTheSecondFailure)
{
    const QString path = Script(u"locked.xdw"_s, 1);
    ScriptedDocument& doc = *engine->Document(path);
    struct Case { int inUse; int opens; size_t pauses; };
    for (const Case c : {Case{5, 6, 4}, Case{29, 30, 28}, Case{30, 30, 29}}) {
        doc.opens = 0;
        doc.inUseOpens = c.inUse;
        engine.pauses.clear();
        DocuWorksFileClass file;
        const QString error = Raised([&] { file.OpenXdw(path, 1); });
        EXPECT_EQ(doc.opens, c.opens) << c.inUse;
        EXPECT_EQ(engine.pauses, std::vector<qint32>(c.pauses, 100)) << c.inUse;
        EXPECT_EQ(error, c.inUse < c.opens ? QString() : u"6300 : OpenXdw : ファイルが使用中です。 [File="_s + path + u']');
    }
    // Any other failure ends at once.
    engine->FailCall(u"OpenDocument"_s, XdwResult::BadFormat);
    engine.pauses.clear();
    const int before = engine->Calls(u"OpenDocument"_s);
    EXPECT_EQ(Raised([&] { DocuWorksFileClass().OpenXdw(path, 1); }),
              u"6300 : OpenXdw : 指定されたDocuWorks文書ファイルが正しいフォーマットではありません。 [File="_s + path + u']');
    EXPECT_EQ(engine->Calls(u"OpenDocument"_s), before + 1);
    EXPECT_TRUE(engine.pauses.empty());
}

TEST_F(DocuWorksTest, TheRuntimeVersionDecidesThePageQuery)
{
    ScriptedPage page;
    page.horRes = 300;
    page.compress = 7;
    const QString path = Script(u"a.xdw"_s, 2, page);
    // The extended query from major version 5 on, compared as a number; the plain query leaves
    // the extended fields alone.
    for (const QString& version : {u"4.2"_s, u"5.0"_s, u"10.1"_s}) {
        engine->SetInformation(1, version);
        const bool extended = version != u"4.2"_s;
        DocuWorksClass dw;
        const auto file = dw.OpenXdw(path, 1);
        file->GetPageInformation(2);
        EXPECT_EQ(file->PageHorRes(), 300);
        EXPECT_EQ(file->PageOrgHorRes(), extended ? 300 : 0) << version.toStdString();
        EXPECT_EQ(file->PageImageWidth(), extended ? 2480 : 0);  // A4 at 300 dpi
        EXPECT_EQ(file->PagePageType(), u"FROMIMAGE"_s);
        EXPECT_EQ(file->PageCompressType(), u"G4"_s);
    }
    EXPECT_EQ(engine->Calls(u"GetPageInformationEx"_s), 2);

    // Opened without the doorway the version is unknown, and the plain query serves.
    DocuWorksFileClass bare;
    bare.OpenXdw(path, 1);
    bare.GetPageInformation(1);
    EXPECT_EQ(engine->Calls(u"GetPageInformation"_s), 2);
    EXPECT_EQ(Raised([&] { bare.GetPageInformation(3); }),
              u"6300 : GetPageInformation : 関数の引数に仕様外の値を渡しました。"_s);
    // Numbers beyond the words read as no word.
    engine->Document(path)->pages[0] = {.pageType = 3, .compress = 12};
    engine->Document(path)->documentType = 2;
    bare.GetPageInformation(1);
    bare.GetDocumentInformation();
    EXPECT_EQ(bare.PagePageType() + bare.PageCompressType() + bare.DocType(), QString());

    // A runtime that can't tell its version fails the open after the document is open.
    engine->FailCall(u"GetInformation"_s, XdwResult::InfoNotFound);
    DocuWorksClass dw;
    EXPECT_EQ(Raised([&] { dw.OpenXdw(path, 1); }), u"6300 : GetInformation : "_s + NotFound);
    dw.RefDwFileData()->TopData();
    EXPECT_NE(dw.RefDwFile()->DocumentHandle(), 0);
}

TEST_F(DocuWorksTest, ConversionChecksColourThenResolutionAndKeepsSixteenBitSizes)
{
    ScriptedPage page;
    page.width = page.height = 2540;  // an inch square keeps the 600 dpi pictures small
    const QString path = Script(u"a.xdw"_s, 1, page);
    DocuWorksClass dw;
    const auto file = dw.OpenXdw(path, 1);
    const QString colour = u"6300 : ConvertPageToImageHandle : カラー指定が正しくありません。"_s;
    const QString dpi = u"6300 : ConvertPageToImageHandle : 解像度は10～600dpiを指定してください。"_s;
    const QString noPage = u"6300 : ConvertPageToImageHandle : 関数の引数に仕様外の値を渡しました。"_s;
    struct Refusal { qint32 page, dpi, colour; QString text; };
    for (const Refusal& r : {Refusal{1, 150, 2, colour}, {1, 150, -1, colour}, {1, 9, 2, colour}, {1, 9, 1, dpi},
                             {1, 601, 0, dpi}, {1, 65546, 1, dpi}, {2, 150, 1, noPage}})
        EXPECT_EQ(Raised([&] { file->ConvertPageToImageHandle(r.page, r.dpi, r.colour); }), r.text) << r.dpi;
    EXPECT_EQ(engine->Calls(u"ConvertPageToImageHandle"_s), 1);  // only for the page that isn't there

    // 0 asks for the larger of the page's two resolutions.
    struct Case { qint32 asked, used; qint16 horRes, verRes; };
    for (const Case c : {Case{10, 10, 200, 400}, {600, 600, 200, 400}, {0, 400, 200, 400}, {0, 300, 300, 200}}) {
        engine->Document(path)->pages[0].horRes = c.horRes;
        engine->Document(path)->pages[0].verRes = c.verRes;
        dw.GlobalFree(file->ConvertPageToImageHandle(1, c.asked, 0));
        EXPECT_EQ(file->BitmapWidth(), c.used) << c.asked << " " << c.horRes << "x" << c.verRes;  // an inch wide
    }

    // Sizes are read as 16-bit numbers; a wider bitmap is an overflow, not a wrong width.
    ScriptedPage banner;
    banner.width = 150000;  // 1.5 m
    banner.height = 500;
    const auto bannerFile = dw.OpenXdw(Script(u"banner.xdw"_s, 1, banner), 1);
    dw.GlobalFree(bannerFile->ConvertPageToImageHandle(1, 600, 0));
    EXPECT_EQ(bannerFile->BitmapHeight(), 118);
    EXPECT_EQ(Raised([&] { (void)bannerFile->BitmapWidth(); }), u"6 : オーバーフローしました。"_s);
    EXPECT_EQ(engine->Handles().LiveCount(), 0);
}

// What the viewer does for every drawing: a fresh doorway, open, walk the list, render, copy
// the picture out of the handle, free it, drop the doorway.
TEST_F(DocuWorksTest, TheViewersDrawingLoopFreesEveryHandleAndClosesEveryDocument)
{
    const QString path = Script(u"a.xdw"_s, 5);
    const QString empty = Script(u"empty.xdw"_s, 0);
    std::vector<QImage> shown;
    for (qint32 page : {1, 2, 3, 4, 5, 3}) {
        DocuWorksClass dw;
        dw.OpenXdw(path, 1);
        dw.OpenXdw(empty, 1);
        const SDC list = dw.RefDwFileData();
        for (list->TopData(); !list->EndOfData(); list->NextData()) {
            const auto file = dw.RefDwFile();
            file->GetDocumentInformation();
            if (file->Pages() < 1)
                continue;
            const qint32 handle = file->ConvertPageToImageHandle(page, 100, 1);
            shown.push_back(*XdwApiObject()->HandleImage(handle));
            dw.GlobalFree(handle);
        }
        EXPECT_EQ(engine->OpenDocuments(), 2);
    }
    EXPECT_EQ(engine->OpenDocuments(), 0);
    EXPECT_EQ(engine->Handles().LiveCount(), 0);
    // The copies outlive their handles.
    ASSERT_EQ(shown.size(), 6u);
    EXPECT_EQ(pagepicture::Read(shown[1]), 2);
    EXPECT_EQ(pagepicture::Read(shown[5]), 3);
}

TEST_F(DocuWorksTest, InstallationKeysCompareExactlyAndOthersAskForTheVersion)
{
    engine->SetInformation(2, u"/opt/docuworks"_s);
    engine->SetInformation(13, u"/opt/docuworks/vlt"_s);
    DocuWorksClass dw;
    EXPECT_EQ(dw.GetInformation(u"INSTALLPATH"_s), u"/opt/docuworks"_s);
    EXPECT_EQ(dw.GetInformation(u"DWVLTPATH"_s), u"/opt/docuworks/vlt"_s);
    EXPECT_EQ(dw.GetInformation(u"installpath"_s), u"9.0.0"_s);
    EXPECT_EQ(Raised([&] { (void)dw.GetInformation(u"BINPATH"_s); }), u"6300 : GetInformation : "_s + NotFound);
    engine->FailCall(u"Finalize"_s, XdwResult::Unexpected);
    EXPECT_EQ(Raised([&] { dw.Finalize(); }), u"6300 : Finalize : その他のエラーです。"_s);
}

TEST(DocuWorksWithoutRuntime, EveryCallFailsWithTheNotInstalledText)
{
    { ScopedScriptedEngine engine; }  // a scripted engine leaves with its scope
    QTemporaryDir dir;
    const QString path = dir.filePath(u"a.xdw"_s);
    testfiles::WriteBytes(path, {});
    const QString absent = u"DocuWorksがインストールされていません。または、正しくインストールされていません。"_s;
    DocuWorksClass dw;
    EXPECT_EQ(Raised([&] { dw.OpenXdw(path, 1); }), u"6300 : OpenXdw : "_s + absent + u" [File="_s + path + u']');
    EXPECT_EQ(Raised([&] { (void)dw.DocuWorksVersion(); }), u"6300 : GetInformation : "_s + absent);
    // A code without a text of its own, success included, reads as unexpected.
    for (quint32 other : {0u, 0x80070003u, 0x8004FFFFu})
        EXPECT_EQ(GetXdwErrorText(XdwResult::Code(other)), u"予期しないエラーが発生しました。"_s) << other;
}

namespace {

// An engine that knows only what every engine must: the library's members are left out.
class ViewerOnlyEngine final : public DocumentEngine {
public:
    void OpenDocument(const QString&, qint16) override { Succeed(); }
    qint32 ReadDocumentHandle() override { return 1; }
    void SelectDocumentHandle(qint32) override { Succeed(); }
    void CloseSelectedDocument() override { Succeed(); }
    void GetDocumentInformation() override { Succeed(); }
    void GetPageInformation(qint32) override { Succeed(); }
    void GetPageInformationEx(qint32) override { Succeed(); }
    QString GetInformation(qint16) override { Succeed(); return QStringLiteral("9.0"); }
    qint32 ConvertPageToImageHandle(qint32, qint32, qint32) override { Succeed(); return 0; }
    void Finalize() override { Succeed(); }
};

} // namespace

TEST_F(DocuWorksTest, MembersAnEngineLeavesOutRefuseByNameAndTheAbsentRuntimeAsNotInstalled)
{
    const QString path = Script(u"a.xdw"_s, 1);
    const QString absent = u"DocuWorksがインストールされていません。または、正しくインストールされていません。"_s;
    {
        auto bare = std::make_shared<ViewerOnlyEngine>();
        SetXdwApiObject(bare);
        DocuWorksClass dw;
        const auto file = dw.OpenXdw(path, 1);
        EXPECT_EQ(Raised([&] { file->SaveDocument(); }),
                  u"6300 : SaveDocument : この文書エンジンはSaveDocumentに対応していません。"_s);
        EXPECT_EQ(bare->LastResult(), XdwResult::Unexpected);
        EXPECT_EQ(Raised([&] { dw.CreateBinder(dir.filePath(u"b.xbd"_s)); }),
                  u"6300 : CreateBinder : この文書エンジンはCreateBinderに対応していません。"_s);
        // The direct route answers with the code, and the text comes from the table.
        EXPECT_EQ(Raised([&] { file->RotatePageAuto(1); }), u"6300 : RotatePageAuto : その他のエラーです。"_s);
    }
    SetXdwApiObject(nullptr);
    DocuWorksClass dw;
    EXPECT_EQ(Raised([&] { dw.CreateBinder(dir.filePath(u"b.xbd"_s)); }), u"6300 : CreateBinder : "_s + absent);
    EXPECT_EQ(Raised([&] { dw.MergeXdwDocument(dir.filePath(u"m.xdw"_s)); }),
              u"6300 : MergeXdwDocument : 入力ファイルが登録されていません。"_s);
}
