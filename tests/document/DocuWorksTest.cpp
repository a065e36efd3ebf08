#include "common/PagePicture.h"
#include "common/ScriptedEngine.h"
#include "document/DocuWorksClass.h"
#include "document/DocuWorksFileClass.h"
#include "document/XdwApi.h"
#include "support/AppError.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <ostream>

using namespace Qt::Literals::StringLiterals;

// Readable failures for the texts compared below.
void PrintTo(const QString& vText, std::ostream* vOut)
{
    *vOut << '"' << vText.toStdString() << '"';
}

namespace {

// "number : description" of what vCall raised, or "" when it raised nothing.
template <class F>
QString Raised(F vCall)
{
    try {
        vCall();
    } catch (const AppError& e) {
        return e.Message();
    }
    return {};
}

class DocuWorksTest : public ::testing::Test {
protected:
    // An empty file of that name (the opening checks that it exists), known to the engine as a
    // document of vPages pages.
    QString Script(const QString& vName, int vPages, ScriptedPage vPage = {})
    {
        const QString path = Touch(vName);
        engine->AddDocument(path, vPages, vPage);
        return path;
    }
    QString Touch(const QString& vName)
    {
        const QString path = dir.filePath(vName);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return path;
    }

    QTemporaryDir dir;
    ScopedScriptedEngine engine;
};

const QString NotADocument = u"6300 : OpenXdw : DocuWorks文書以外はオープンできません。 [File="_s;

} // namespace

TEST_F(DocuWorksTest, OnlyDocuWorksEndingsOpenWhateverTheirCase)
{
    DocuWorksClass dw;
    for (const QString& name : {u"a.XDW"_s, u"a.xct"_s, u"b.xbd"_s}) {
        const QString path = Script(name, 1);
        const auto file = dw.OpenXdw(path, 1);
        EXPECT_NE(file->DocumentHandle(), 0) << name.toStdString();
        EXPECT_EQ(file->DwPath(), path);
    }
    EXPECT_EQ(dw.RefDwFileData()->Count(), 3);

    // Refused before the runtime is asked, with the path in the text.
    const QString pdf = Script(u"a.pdf"_s, 1);
    EXPECT_EQ(Raised([&] { dw.OpenXdw(pdf, 1); }), NotADocument + pdf + u']');
    DocuWorksFileClass file;
    EXPECT_EQ(Raised([&] { file.OpenXdw(u"dw"_s, 1); }), NotADocument + u"dw]"_s);
    EXPECT_EQ(Raised([&] { file.OpenXdw({}, 1); }), NotADocument + u"dw]"_s);
    EXPECT_EQ(engine->Calls(u"OpenDocument"_s), 3);

    // An empty path opens the stored one again.
    const QString stored = Script(u"c.xdw"_s, 2);
    file.SetDwPath(stored);
    file.OpenXdw({}, 1);
    EXPECT_NE(file.DocumentHandle(), 0);
    EXPECT_EQ(file.DwPath(), stored);
}

TEST_F(DocuWorksTest, AMissingFileIsNamedAndNothingIsAddedOrAsked)
{
    DocuWorksClass dw;
    const QString path = dir.filePath(u"無い.xdw"_s);
    EXPECT_EQ(Raised([&] { dw.OpenXdw(path, 1); }), u"6300 : OpenXdw : "_s + path + u"が見つかりません。"_s);
    EXPECT_EQ(dw.RefDwFileData()->Count(), 0);
    EXPECT_EQ(engine->Calls(u"OpenDocument"_s), 0);
}

TEST_F(DocuWorksTest, AFailedOpenCarriesTheRuntimesTextAndStaysInTheList)
{
    const QString broken = Script(u"broken.xdw"_s, 1);
    engine->Document(broken)->failures[u"OpenDocument"_s] = XdwResult::BadFormat;
    const QString unknown = Touch(u"unknown.xdw"_s);  // on disk, but no document to the runtime
    {
        DocuWorksClass dw;
        EXPECT_EQ(Raised([&] { dw.OpenXdw(broken, 1); }),
                  u"6300 : OpenXdw : 指定されたDocuWorks文書ファイルが正しいフォーマットではありません。 [File="_s
                      + broken + u']');
        EXPECT_EQ(Raised([&] { dw.OpenXdw(unknown, 1); }),
                  u"6300 : OpenXdw : 入力に指定したパスのファイルが見つかりません。 [File="_s + unknown + u']');
        const SDC list = dw.RefDwFileData();
        ASSERT_EQ(list->Count(), 2);
        list->TopData();
        EXPECT_EQ(dw.RefDwFile()->DocumentHandle(), 0);
        EXPECT_EQ(dw.RefDwFile()->DwPath(), broken);
    }
    // Nothing was open, so dropping the object closes nothing.
    EXPECT_EQ(engine->Calls(u"CloseSelectedDocument"_s), 0);
}

TEST_F(DocuWorksTest, AFileInUseIsTriedThirtyTimesWaitingFromTheSecondFailure)
{
    const QString path = Script(u"locked.xdw"_s, 1);
    ScriptedDocument& doc = *engine->Document(path);

    struct Case { int inUse; int opens; size_t pauses; bool opened; };
    for (const Case c : {Case{5, 6, 4, true}, Case{29, 30, 28, true}, Case{30, 30, 29, false}}) {
        doc.opens = 0;
        doc.inUseOpens = c.inUse;
        engine.pauses.clear();
        DocuWorksFileClass file;
        const QString error = Raised([&] { file.OpenXdw(path, 1); });
        EXPECT_EQ(doc.opens, c.opens) << c.inUse;
        EXPECT_EQ(engine.pauses, std::vector<qint32>(c.pauses, 100)) << c.inUse;
        EXPECT_EQ(file.DocumentHandle() != 0, c.opened) << c.inUse;
        EXPECT_EQ(error, c.opened ? QString() : u"6300 : OpenXdw : ファイルが使用中です。 [File="_s + path + u']');
    }

    // Any other failure ends at once.
    doc.opens = doc.inUseOpens = 0;
    doc.failures[u"OpenDocument"_s] = XdwResult::AccessDenied;
    engine.pauses.clear();
    DocuWorksFileClass file;
    EXPECT_FALSE(Raised([&] { file.OpenXdw(path, 1); }).isEmpty());
    EXPECT_EQ(doc.opens, 1);
    EXPECT_TRUE(engine.pauses.empty());
}

TEST_F(DocuWorksTest, TheRuntimeVersionDecidesThePageQuery)
{
    ScriptedPage page;
    page.horRes = 300;
    const QString path = Script(u"a.xdw"_s, 2, page);

    engine->SetInformation(1, u"4.2"_s);
    {
        DocuWorksClass dw;
        const auto file = dw.OpenXdw(path, 1);
        EXPECT_EQ(file->DocuWorksVersion(), u"4.2"_s);
        file->GetPageInformation(2);
        EXPECT_EQ(engine->Calls(u"GetPageInformation"_s), 1);
        EXPECT_EQ(file->PageHorRes(), 300);
        EXPECT_EQ(file->PageOrgHorRes(), 0);  // the plain query leaves the extended fields
    }
    engine->SetInformation(1, u"5.0"_s);  // the first version with the extended query
    {
        DocuWorksClass dw;
        const auto file = dw.OpenXdw(path, 1);
        file->GetPageInformation(2);
        EXPECT_EQ(engine->Calls(u"GetPageInformationEx"_s), 1);
        EXPECT_EQ(file->PageOrgHorRes(), 300);
        EXPECT_EQ(file->PageImageWidth(), 2480);  // A4 at 300 dpi
    }
    // Opened without the doorway the version is unknown, and the plain query serves.
    DocuWorksFileClass bare;
    bare.OpenXdw(path, 1);
    bare.GetPageInformation(1);
    EXPECT_EQ(engine->Calls(u"GetPageInformation"_s), 2);
    EXPECT_EQ(Raised([&] { bare.GetPageInformationNormal(3); }),
              u"6300 : GetPageInformation : 関数の引数に仕様外の値を渡しました。"_s);

    // A runtime that can't tell its version fails the open after the document is open.
    engine->ClearInformation(1);
    DocuWorksClass dw;
    EXPECT_EQ(Raised([&] { dw.OpenXdw(path, 1); }),
              u"6300 : GetInformation : 問い合わせた情報(インストール情報、属性値など)は存在しません。"_s);
    dw.RefDwFileData()->TopData();
    EXPECT_NE(dw.RefDwFile()->DocumentHandle(), 0);
}

TEST_F(DocuWorksTest, DocumentAndPageFieldsAndTheirWords)
{
    ScriptedPage page;
    page.pageType = 2;
    page.compress = 7;
    const QString path = Script(u"a.xdw"_s, 3, page);
    DocuWorksClass dw;
    const auto file = dw.OpenXdw(path, 1);
    EXPECT_EQ(file->DocType(), u"DOCUMENT"_s);  // the faces of fields never queried read 0
    file->GetDocumentInformation();
    EXPECT_EQ(file->Pages(), 3);
    EXPECT_EQ(file->Version(), 7);

    ScriptedDocument& doc = *engine->Document(path);
    for (auto [type, word] : {std::pair{1, u"BINDER"_s}, {2, QString()}, {-1, QString()}}) {
        doc.documentType = static_cast<qint16>(type);
        file->GetDocumentInformation();
        EXPECT_EQ(file->DocType(), word) << type;
    }
    for (auto [pageType, compress, typeWord, compressWord] :
         {std::tuple{0, 0, u"NULL"_s, u"NORMAL"_s}, {1, 11, u"FROMIMAGE"_s, u"MRC"_s},
          {2, 7, u"FROMAPPL"_s, u"G4"_s}, {3, 12, QString(), QString()}}) {
        doc.pages[0].pageType = static_cast<qint16>(pageType);
        doc.pages[0].compress = static_cast<qint16>(compress);
        file->GetPageInformation(1);
        EXPECT_EQ(file->PagePageType(), typeWord) << pageType;
        EXPECT_EQ(file->PageCompressType(), compressWord) << compress;
    }

    // A failed query raises with its name and leaves what was read before.
    doc.failures[u"GetDocumentInformation"_s] = XdwResult::Unexpected;
    doc.pages.append(page);
    EXPECT_EQ(Raised([&] { file->GetDocumentInformation(); }),
              u"6300 : GetDocumentInformation : その他のエラーです。"_s);
    EXPECT_EQ(file->Pages(), 3);
}

TEST_F(DocuWorksTest, ConversionChecksColourThenResolution)
{
    ScriptedPage page;
    page.width = page.height = 2540;  // an inch square keeps the 600 dpi pictures small
    page.horRes = 200;
    page.verRes = 400;
    const QString path = Script(u"a.xdw"_s, 1, page);
    DocuWorksClass dw;
    const auto file = dw.OpenXdw(path, 1);
    const QString colour = u"6300 : ConvertPageToImageHandle : カラー指定が正しくありません。"_s;
    const QString dpi = u"6300 : ConvertPageToImageHandle : 解像度は10～600dpiを指定してください。"_s;

    EXPECT_EQ(Raised([&] { file->ConvertPageToImageHandle(1, 150, 2); }), colour);
    EXPECT_EQ(Raised([&] { file->ConvertPageToImageHandle(1, 150, -1); }), colour);
    EXPECT_EQ(Raised([&] { file->ConvertPageToImageHandle(1, 9, 2); }), colour);
    EXPECT_EQ(Raised([&] { file->ConvertPageToImageHandle(1, 9, 1); }), dpi);
    EXPECT_EQ(Raised([&] { file->ConvertPageToImageHandle(1, 601, 0); }), dpi);
    EXPECT_EQ(Raised([&] { file->ConvertPageToImageHandle(1, 65546, 1); }), dpi);
    EXPECT_EQ(engine->Calls(u"ConvertPageToImageHandle"_s), 0);

    for (auto [askedDpi, usedDpi, horRes, verRes] :
         {std::tuple{10, 10, 200, 400}, {600, 600, 200, 400}, {0, 400, 200, 400},
          {0, 300, 300, 300}, {0, 300, 300, 200}}) {
        engine->Document(path)->pages[0].horRes = static_cast<qint16>(horRes);
        engine->Document(path)->pages[0].verRes = static_cast<qint16>(verRes);
        dw.GlobalFree(file->ConvertPageToImageHandle(1, askedDpi, 0));
        EXPECT_EQ(engine->LastDpi(), usedDpi) << askedDpi << " " << horRes << "x" << verRes;
    }
    EXPECT_EQ(engine->LastColor(), 0);
    EXPECT_EQ(engine->Handles().LiveCount(), 0);
}

TEST_F(DocuWorksTest, ConversionKeepsTheBitmapSizeAndReportsFailures)
{
    const QString path = Script(u"a.xdw"_s, 2);
    DocuWorksClass dw;
    const auto file = dw.OpenXdw(path, 1);

    const qint32 handle = file->ConvertPageToImageHandle(2, 150, 1);
    EXPECT_EQ(file->BitmapWidth(), 1240);   // A4 at 150 dpi
    EXPECT_EQ(file->BitmapHeight(), 1754);
    const QImage* picture = engine->HandleImage(handle);
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->size(), QSize(1240, 1754));
    EXPECT_EQ(pagepicture::Read(*picture), 2);
    dw.GlobalFree(handle);
    EXPECT_EQ(engine->HandleImage(handle), nullptr);

    EXPECT_EQ(Raised([&] { file->ConvertPageToImageHandle(3, 150, 1); }),
              u"6300 : ConvertPageToImageHandle : 関数の引数に仕様外の値を渡しました。"_s);
    engine->Document(path)->failures[u"ConvertPageToImageHandle"_s] = XdwResult::OutOfMemory;
    EXPECT_EQ(Raised([&] { file->ConvertPageToImageHandle(1, 300, 1); }),
              u"6300 : ConvertPageToImageHandle : メモリーの獲得に失敗しました。"_s);
    EXPECT_EQ(file->BitmapWidth(), 1240);  // the last size stays

    // Sizes are read as 16-bit numbers; a wider bitmap is an overflow, not a wrong width.
    ScriptedPage banner;
    banner.width = 150000;  // 1.5 m
    banner.height = 500;
    const QString wide = Script(u"banner.xdw"_s, 1, banner);
    const auto bannerFile = dw.OpenXdw(wide, 1);
    dw.GlobalFree(bannerFile->ConvertPageToImageHandle(1, 600, 0));
    EXPECT_EQ(bannerFile->BitmapHeight(), 118);
    EXPECT_EQ(Raised([&] { (void)bannerFile->BitmapWidth(); }), u"6 : オーバーフローしました。"_s);
}

// What the viewer does for every drawing: a fresh doorway, open, walk the list, render, copy
// the picture out of the handle, free it, drop the doorway.
TEST_F(DocuWorksTest, TheViewersDrawingLoopFreesEveryHandleAndClosesEveryDocument)
{
    const QString path = Script(u"a.xdw"_s, 5);
    Script(u"empty.xdw"_s, 0);
    std::vector<QImage> shown;
    for (qint32 page : {1, 2, 3, 4, 5, 3}) {
        DocuWorksClass dw;
        dw.OpenXdw(path, 1);
        dw.OpenXdw(dir.filePath(u"empty.xdw"_s), 1);
        const SDC list = dw.RefDwFileData();
        for (list->TopData(); !list->EndOfData(); list->NextData()) {
            const std::shared_ptr<DocuWorksFileClass> file = dw.RefDwFile();
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
    EXPECT_EQ(engine->Calls(u"CloseSelectedDocument"_s), 12);
    EXPECT_EQ(engine->Handles().LiveCount(), 0);
    EXPECT_EQ(engine->Handles().TakenCount(), 6);
    // The copies outlive their handles.
    ASSERT_EQ(shown.size(), 6u);
    EXPECT_EQ(pagepicture::Read(shown[1]), 2);
    EXPECT_EQ(pagepicture::Read(shown[5]), 3);
}

TEST_F(DocuWorksTest, ADocumentClosedByHandIsClosedAgainWhenDropped)
{
    const QString path = Script(u"a.xdw"_s, 1);
    {
        DocuWorksClass dw;
        const auto file = dw.OpenXdw(path, 1);
        const qint32 handle = file->DocumentHandle();
        file->CloseDocument();
        EXPECT_EQ(engine->OpenDocuments(), 0);
        EXPECT_EQ(file->DocumentHandle(), handle);
    }
    EXPECT_EQ(engine->Calls(u"CloseSelectedDocument"_s), 2);
}

TEST_F(DocuWorksTest, InstallationKeysAndVersionParts)
{
    engine->SetInformation(1, u"9.0.3"_s);
    engine->SetInformation(2, u"/opt/docuworks"_s);
    engine->SetInformation(13, u"/opt/docuworks/vlt"_s);
    DocuWorksClass dw;
    EXPECT_EQ(dw.GetInformation(u"INSTALLPATH"_s), u"/opt/docuworks"_s);
    EXPECT_EQ(dw.GetInformation(u"DWVLTPATH"_s), u"/opt/docuworks/vlt"_s);
    // Keys compare exactly; anything else asks for the version.
    EXPECT_EQ(dw.GetInformation(u"installpath"_s), u"9.0.3"_s);
    EXPECT_EQ(dw.GetInformation({}), u"9.0.3"_s);
    EXPECT_EQ(dw.DocuWorksVersion(), u"9.0.3"_s);
    EXPECT_EQ(Raised([&] { (void)dw.GetInformation(u"BINPATH"_s); }),
              u"6300 : GetInformation : 問い合わせた情報(インストール情報、属性値など)は存在しません。"_s);

    for (auto [version, major] : {std::pair{u"7.3.0"_s, u"7"_s}, {u"10"_s, u"10"_s}, {u".5"_s, QString()},
                                  {QString(), QString()}})
        EXPECT_EQ(DocuWorksClass::GetPartOfMajorVersion(version), major) << version.toStdString();

    EXPECT_EQ(DocuWorksClass::CLibLenB(u"ab文書"_s), 6);
    dw.Finalize();
    engine->FailCall(u"Finalize"_s, XdwResult::Unexpected);
    EXPECT_EQ(Raised([&] { dw.Finalize(); }), u"6300 : Finalize : その他のエラーです。"_s);
}

TEST(DocuWorksWithoutRuntime, OpeningFailsWithTheNotInstalledText)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(u"a.xdw"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QString absent = u"DocuWorksがインストールされていません。または、正しくインストールされていません。"_s;

    DocuWorksClass dw;
    EXPECT_EQ(Raised([&] { dw.OpenXdw(path, 1); }), u"6300 : OpenXdw : "_s + absent + u" [File="_s + path + u']');
    EXPECT_EQ(XdwApiObject()->LastResult(), XdwResult::NotInstalled);
    EXPECT_EQ(XdwApiObject()->LastErrorText(), absent);
    EXPECT_EQ(Raised([&] { (void)dw.DocuWorksVersion(); }), u"6300 : GetInformation : "_s + absent);
    EXPECT_EQ(Raised([&] { dw.Finalize(); }), u"6300 : Finalize : "_s + absent);

    // A scripted engine leaves again with its scope.
    {
        ScopedScriptedEngine engine;
        EXPECT_EQ(XdwApiObject(), engine.Shared());
    }
    EXPECT_EQ(Raised([&] { DocuWorksClass().OpenXdw(path, 1); }).isEmpty(), false);
}

TEST(XdwResultTexts, EveryCodeHasItsTextAndOthersTheUnexpectedOne)
{
    const std::pair<quint32, QString> table[] = {
        {0x8000FFFF, u"その他のエラーです。"_s},
        {0x80001156, u"アプリケーションの起動ができませんでした。"_s},
        {0x80040001, u"DocuWorksがインストールされていません。または、正しくインストールされていません。"_s},
        {0x80040002, u"問い合わせた情報(インストール情報、属性値など)は存在しません。"_s},
        {0x80040003, u"認証に失敗したため文書を開くことができません、または認可されていない操作を行いました。"_s},
        {0x80040004, u"無効な操作(回転できないページに対して回転、白黒イメージでないページに対してノイズ除去等)を行いました。"_s},
        {0x80040005, u"処理がキャンセルされました。"_s},
        {0x80070002, u"入力に指定したパスのファイルが見つかりません。"_s},
        {0x80070005, u"アクセス権がないため、ファイルオープンやファイル生成に失敗しました。"_s},
        {0x8007000B, u"指定されたDocuWorks文書ファイルが正しいフォーマットではありません。"_s},
        {0x8007000E, u"メモリーの獲得に失敗しました。"_s},
        {0x8007001D, u"書き込み中にエラーが発生しました。"_s},
        {0x80070020, u"ファイルが使用中です。"_s},
        {0x80070027, u"ディスク不足です。"_s},
        {0x80070050, u"出力に指定したパスのファイルがすでに存在しています。"_s},
        {0x80070057, u"関数の引数に仕様外の値を渡しました。"_s},
        {0x8007007A, u"バッファ領域が不足しているため、情報を取得できません。"_s},
        {0x8007007B, u"パス名の指定が正しくありません。"_s},
        {0x800E0004, u"DocuWorksファイルのバージョンが新しいため、開くことができません。"_s},
        {0x800E0005, u"ネットワーク関連のエラーです(ネットワークパスが間違っている、ログオンに失敗したなど)。"_s},
    };
    for (const auto& [code, text] : table)
        EXPECT_EQ(GetXdwErrorText(XdwResult::Code(code)), text) << std::hex << code;
    for (quint32 other : {0u, 1u, 0x80070003u, 0x8004FFFFu})
        EXPECT_EQ(GetXdwErrorText(XdwResult::Code(other)), u"予期しないエラーが発生しました。"_s) << other;
}
