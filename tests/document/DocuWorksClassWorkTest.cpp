// The doorway's whole-file work: its settings, the checks before each runtime call, the
// retries on a file in use, and the conversion of a document into page pictures.
#include "document/DocumentTesting.h"

#include "document/DocuWorksClass.h"
#include "document/DocuWorksFileClass.h"
#include "support/CommonLibClass.h"

#include <QCoreApplication>
#include <QDir>

using namespace Qt::Literals::StringLiterals;
using namespace documenttesting;

namespace {

class DocuWorksClassWork : public DocumentTest {
protected:
    DocuWorksClass dw;
};

const QString InUse = u"ファイルが使用中です。"_s;
const QString Denied = u"認証に失敗したため文書を開くことができません、または認可されていない操作を行いました。"_s;

} // namespace

TEST_F(DocuWorksClassWork, PlacingWordsAndPermissionFlagsKeepTheirOwnRules)
{
    EXPECT_EQ(dw.Compress(), u"NORMAL"_s);
    EXPECT_EQ(dw.FitImage(), u"FITDEF"_s);
    EXPECT_EQ(dw.HorPos() + dw.VerPos(), u"CENTERCENTER"_s);
    // Words compare exactly: anything else, lower case included, is the centre.
    struct Case { QString hor, verWord, horRead, verRead; };
    for (const Case& c : {Case{u"LEFT"_s, u"TOP"_s, u"LEFT"_s, u"TOP"_s}, {u"RIGHT"_s, u"BOTTOM"_s, u"RIGHT"_s, u"BOTTOM"_s},
                          {u"right"_s, u"bottom"_s, u"CENTER"_s, u"CENTER"_s}, {u"LEFT "_s, u""_s, u"CENTER"_s, u"CENTER"_s}}) {
        dw.SetHorPos(c.hor);
        dw.SetVerPos(c.verWord);
        EXPECT_EQ(dw.HorPos(), c.horRead) << c.hor.toStdString();
        EXPECT_EQ(dw.VerPos(), c.verRead);
    }

    // A flag moves the sum only when it changes.
    dw.SetProtectPermissionDocEdit(true);
    dw.SetProtectPermissionDocEdit(true);
    dw.SetProtectPermissionAnnoEdit(false);
    dw.SetProtectPermissionPrint(true);
    dw.SetProtectPermissionCopy(true);
    dw.SetProtectPermissionCopy(false);
    dw.SetProtectPermissionCopy(false);
    dw.SetProtectOpenPass(u"open"_s);
    dw.SetProtectFullAccessPass(u"full"_s);
    dw.SetProtectComment(u"社外秘"_s);
    const QString in = Script(u"in.xdw"_s, 1);
    const QString out = dir.filePath(u"out.xdw"_s);
    dw.ProtectDocument(in, out);
    EXPECT_EQ(engine->Last(u"ProtectDocument"_s),
              QStringList({in, out, u"1"_s, u"10"_s, u"open"_s, u"full"_s, u"社外秘"_s}));
}

TEST_F(DocuWorksClassWork, ProtectionChecksLengthsThenFilesInOrder)
{
    const QString prefix = u"6300 : ProtectDocument : "_s;
    const QString in = Script(u"in.xdw"_s, 1);
    const QString taken = Touch(u"taken.xdw"_s);
    const QString tooLong = FullWidth(128);                   // 256 bytes
    const QString longest = FullWidth(127) + u"a"_s;          // 255 bytes, and not there
    struct Case { QString in, out, text; };
    for (const Case& c : {Case{tooLong, tooLong, prefix + u"入力ファイル名は255バイト以下で設定してください。"_s},
                          {longest, tooLong, prefix + u"出力ファイル名は255バイト以下で設定してください。"_s},
                          {longest, longest, prefix + longest + u"が見つかりません。"_s},
                          {in, taken, prefix + taken + u"が既に存在しています。"_s}})
        EXPECT_EQ(Raised([&] { dw.ProtectDocument(c.in, c.out); }), c.text);
    EXPECT_EQ(engine->Calls(u"ProtectDocument"_s), 0);

    engine->FailCall(u"ProtectDocument"_s, XdwResult::AccessDenied);
    EXPECT_EQ(Raised([&] { dw.ProtectDocument(in, longest); }), prefix + Denied);
}

TEST_F(DocuWorksClassWork, MergingNeedsInputsThatAreThereAndAnOutputThatIsNot)
{
    const QString prefix = u"6300 : MergeXdwDocument : "_s;
    const QString out = dir.filePath(u"merged.xdw"_s);
    const QString noInput = prefix + u"入力ファイルが登録されていません。"_s;
    // A list never asked for and an empty one read the same; only the second clears the runtime's.
    EXPECT_EQ(Raised([&] { dw.MergeXdwDocument(out); }), noInput);
    EXPECT_EQ(engine->Calls(u"ClearMergeInputs"_s), 0);
    const SDC list = dw.RefMergeFileList();
    EXPECT_EQ(dw.RefMergeFileList(), list);
    EXPECT_EQ(Raised([&] { dw.MergeXdwDocument(out); }), noInput);
    EXPECT_EQ(engine->Calls(u"ClearMergeInputs"_s), 1);

    EXPECT_EQ(Raised([&] { dw.MergeXdwDocument(FullWidth(128)); }), prefix + u"出力ファイル名は255バイト以下で設定してください。"_s);
    const QString taken = Touch(u"taken.xdw"_s);
    EXPECT_EQ(Raised([&] { dw.MergeXdwDocument(taken); }), prefix + taken + u"が既に存在しています。"_s);

    const QString a = Script(u"a.xdw"_s, 1), b = Script(u"b.xdw"_s, 2);
    const QString missing = dir.filePath(u"missing.xdw"_s);
    list->AddData(a);
    list->AddData(missing);
    EXPECT_EQ(Raised([&] { dw.MergeXdwDocument(out); }), prefix + missing + u"が見つかりません。"_s);
    list->SetDataValueOfNumber(2, FullWidth(128));
    EXPECT_EQ(Raised([&] { dw.MergeXdwDocument(out); }), prefix + u"入力ファイル名は255バイト以下で設定してください。"_s);

    list->SetDataValueOfNumber(2, b);
    list->AddData(a);
    dw.MergeXdwDocument(out);
    EXPECT_EQ(engine->mergeInputs, QStringList({a, b, a}));  // cleared before, in list order
    EXPECT_EQ(engine->Last(u"MergeDocuments"_s), QStringList{out});
    engine->FailCall(u"MergeDocuments"_s, XdwResult::DiskFull);
    EXPECT_EQ(Raised([&] { dw.MergeXdwDocument(out); }), prefix + u"ディスク不足です。"_s);
}

TEST_F(DocuWorksClassWork, BindersCheckNamesAndFilesBeforeTheRuntime)
{
    const QString create = u"6300 : CreateBinder : "_s, insert = u"6300 : InsertDocumentToBinder : "_s;
    const QString doc = Script(u"a.xdw"_s, 1), binder = Touch(u"b.xbd"_s);
    const QString missing = dir.filePath(u"none.xdw"_s);
    EXPECT_EQ(Raised([&] { dw.CreateBinder(FullWidth(128)); }), create + u"ファイル名は255バイト以下で設定してください。"_s);
    EXPECT_EQ(Raised([&] { dw.CreateBinder(binder); }), create + binder + u"が既に存在しています。"_s);
    dw.CreateBinder(missing);
    engine->FailCall(u"CreateBinder"_s, XdwResult::BadPathName);
    EXPECT_EQ(Raised([&] { dw.CreateBinder(missing); }), create + u"パス名の指定が正しくありません。"_s);

    struct Case { QString doc, binder, text; };
    for (const Case& c : {Case{FullWidth(128), FullWidth(128), insert + u"XDWファイル名は255バイト以下で設定してください。"_s},
                          {doc, FullWidth(128), insert + u"バインダファイル名は255バイト以下で設定してください。"_s},
                          {missing, missing, insert + missing + u"が見つかりません。"_s},
                          {doc, missing, insert + missing + u"が見つかりません。"_s}})
        EXPECT_EQ(Raised([&] { dw.InsertDocumentToBinder(c.doc, c.binder, 1); }), c.text);
    dw.InsertDocumentToBinder(doc, binder, 3);
    EXPECT_EQ(engine->Last(u"InsertDocumentToBinder"_s), QStringList({doc, binder, u"3"_s}));
}

TEST_F(DocuWorksClassWork, ImagesBecomeDocumentsWithTheirPlacingAndRetriesWhileInUse)
{
    const QString image = Touch(u"scan.tif"_s);
    const QString xdw = dir.filePath(u"scan.xdw"_s);
    dw.SetFitImage(u"FIT"_s);
    dw.SetCompress(u"LOSSLESS"_s);
    dw.SetZoom(150);
    dw.SetWidth(2100);
    dw.SetHeight(2970);
    dw.SetHorPos(u"RIGHT"_s);
    dw.SetVerPos(u"TOP"_s);
    const QStringList placing = {u"FIT"_s, u"LOSSLESS"_s, u"150"_s, u"2100"_s, u"2970"_s, u"RIGHT"_s, u"TOP"_s};
    dw.CreateXdwFromImageFile(image, xdw);
    EXPECT_EQ(engine->Last(u"SetImageToDocumentOptions"_s), placing);
    EXPECT_EQ(engine->Last(u"CreateDocumentFromImage"_s), QStringList({image, xdw}));
    // Converted once: a file in use fails at once.
    engine->FailNext(u"CreateDocumentFromImage"_s, XdwResult::FileInUse);
    EXPECT_EQ(Raised([&] { dw.CreateXdwFromImageFile(image, xdw); }), u"6300 : CreateXdwFromImageFile : "_s + InUse);
    EXPECT_TRUE(engine.pauses.empty());

    // The newer call waits 100 ms after each try the image was in use, 31 tries at most.
    QFile::remove(xdw);
    engine->FailNext(u"CreateDocumentFromImage"_s, XdwResult::FileInUse, 3);
    const int before = engine->Calls(u"CreateDocumentFromImage"_s);
    dw.CreateXdwFromImageFileEx2(image, xdw);
    EXPECT_EQ(engine->Calls(u"CreateDocumentFromImage"_s), before + 4);
    EXPECT_EQ(engine.pauses, std::vector<qint32>(3, 100));
    EXPECT_EQ(engine->Last(u"SetImageToDocumentOptionsEx2"_s), placing + QStringList({u"150"_s, u"DEFAULT"_s}));

    engine.pauses.clear();
    engine->FailCall(u"CreateDocumentFromImage"_s, XdwResult::FileInUse);
    EXPECT_EQ(Raised([&] { dw.CreateXdwFromImageFileEx2(image, xdw); }),
              u"6300 : CreateXdwFromImageFile : "_s + InUse
                  + u" FitImage=FIT Compress=LOSSLESS Zoom=150 Width=2100 Height=2970 HorPos=RIGHT VerPos=TOP ImagePath="_s
                  + image + u" XdwPath="_s + xdw);
    EXPECT_EQ(engine.pauses.size(), 31u);

    // Images or PDF: the document path goes first to the runtime, the same retries, its own text.
    engine.pauses.clear();
    engine->FailNext(u"CreateDocumentFromImagePdf"_s, XdwResult::FileInUse, 30);
    const QString pdfXdw = dir.filePath(u"pdf.xdw"_s);
    dw.CreateXdwFromImagePdfFile(image, pdfXdw);
    EXPECT_EQ(engine->Last(u"CreateDocumentFromImagePdf"_s), QStringList({pdfXdw, image}));
    EXPECT_EQ(engine.pauses.size(), 30u);
    engine->FailCall(u"CreateDocumentFromImagePdf"_s, XdwResult::BadFormat);
    EXPECT_EQ(Raised([&] { dw.CreateXdwFromImagePdfFile(image, pdfXdw); }),
              u"6300 : CreateXdwFromImagePdfFile : 指定されたDocuWorks文書ファイルが正しいフォーマットではありません。 ImagePath="_s
                  + image + u" XdwPath="_s + pdfXdw);
}

TEST_F(DocuWorksClassWork, AnApplicationsConversionEndsOnEightOrNineOrIsCancelledAfterAThousandRounds)
{
    const QString app = Touch(u"a.docx"_s), xdw = dir.filePath(u"a.xdw"_s);
    // The first look of a round ends on 8 only, the second on 9 only: an 8 or a 9 seen by the
    // other look waits for the next round.
    struct Case { QStringList statuses; int reads; size_t pauses; };
    for (const Case& c : {Case{{u"8"_s}, 1, 0}, {{u"1"_s, u"9"_s}, 2, 0}, {{u"1"_s, u"2"_s, u"3"_s, u"8"_s}, 5, 2},
                          {{u"9"_s, u"8"_s}, 3, 1}}) {
        engine->SetAnswers(u"GetStatusCreationFromApp"_s, c.statuses);
        engine.pauses.clear();
        const int reads = engine->Calls(u"GetStatusCreationFromApp"_s);
        dw.BeginCreationFromAppFile(app, xdw, true);
        EXPECT_EQ(engine->Calls(u"GetStatusCreationFromApp"_s) - reads, c.reads) << c.statuses.join(u',').toStdString();
        EXPECT_EQ(engine.pauses.size(), c.pauses);
    }
    EXPECT_EQ(engine->Last(u"BeginCreationFromApp"_s), QStringList({app, xdw, u"true"_s}));
    EXPECT_EQ(engine->Calls(u"EndCreationFromApp"_s), 4);

    engine->SetAnswers(u"GetStatusCreationFromApp"_s, {u"3"_s});
    engine->ClearLog();
    engine.pauses.clear();
    EXPECT_EQ(Raised([&] { dw.BeginCreationFromAppFile(app, xdw, false); }),
              u"6300 : BeginCreationFromAppFile : タイムオーバーでDocuWorks化に失敗しました。"_s);
    EXPECT_EQ(engine.pauses, std::vector<qint32>(1000, 10));
    const QStringList names = engine->Names();
    EXPECT_EQ(names.count(u"GetStatusCreationFromApp"_s), 2000);
    EXPECT_EQ(names.mid(names.size() - 2), QStringList({u"CancelCreationFromApp"_s, u"EndCreationFromApp"_s}));

    engine->FailNext(u"BeginCreationFromApp"_s, XdwResult::CannotStartApplication);
    engine->ClearLog();
    EXPECT_EQ(Raised([&] { dw.BeginCreationFromAppFile(app, xdw, false); }),
              u"6300 : BeginCreationFromAppFile : アプリケーションの起動ができませんでした。"_s);
    EXPECT_EQ(engine->Names(), QStringList{u"BeginCreationFromApp"_s});
}

TEST_F(DocuWorksClassWork, ADocumentBecomesPagePicturesInPlaceAndLeavesTheWorkFolderEmpty)
{
    const QString target = Script(u"target.xdw"_s, 3);
    QDir work(dir.filePath(u"work"_s));
    ASSERT_TRUE(work.mkpath(u"."_s));
    EXPECT_EQ(Raised([&] { dw.ConvertXdwOfImage(target, dir.filePath(u"none"_s), 200, 1); }),
              u"6300 : ConvertXdwOfImage : 作業用フォルダが存在しません。"_s);

    QStringList events;
    dw.OnProgressStart([&](const QString& vName, qint32 vCount) { events << vName + u' ' + QString::number(vCount); });
    dw.OnProgressNext([&](const QString& vName) { events << vName; });
    dw.ConvertXdwOfImage(target, work.path(), 200, 1);

    EXPECT_EQ(events, QStringList({u"ConvertXdwOfImage 3"_s, u"ConvertXdwOfImage"_s, u"ConvertXdwOfImage"_s,
                                   u"ConvertXdwOfImage"_s}));
    const QString picture = work.filePath(u"TempImage.bmp"_s);
    const QString base = work.filePath(u"TempImage_base.xdw"_s);
    const QString pageDoc = work.filePath(u"TempImage.xdw"_s);
    EXPECT_EQ(engine->Last(u"ConvertPageToImageFile"_s), QStringList({u"3"_s, picture, u"200"_s, u"1"_s, u"DIB"_s}));
    // Without loss and filling the page; the first picture is the base, the others join it.
    EXPECT_EQ(engine->Last(u"SetImageToDocumentOptions"_s),
              QStringList({u"FIT"_s, u"LOSSLESS"_s, u"0"_s, u"0"_s, u"0"_s, u"CENTER"_s, u"CENTER"_s}));
    QStringList made, inserted;
    for (const ScriptedEngine::Call& call : engine->Log()) {
        if (call.name == u"CreateDocumentFromImage"_s)
            made << call.args.join(u'>');
        if (call.name == u"InsertDocument"_s)
            inserted << call.args.join(u'<');
    }
    EXPECT_EQ(made, QStringList({picture + u'>' + base, picture + u'>' + pageDoc, picture + u'>' + pageDoc}));
    EXPECT_EQ(inserted, QStringList({u"2<"_s + pageDoc, u"3<"_s + pageDoc}));
    EXPECT_EQ(engine->Calls(u"SaveDocument"_s), 2);
    EXPECT_EQ(engine->Document(base)->pages.size(), 3);
    // The base took the target's place; the pictures and page documents are gone; all closed.
    EXPECT_TRUE(work.entryList(QDir::Files).isEmpty());
    EXPECT_TRUE(QFile::exists(target));
    EXPECT_EQ(engine->OpenDocuments(), 0);
}

TEST_F(DocuWorksClassWork, ImageSizesRoundHalvesToEvenAndFailuresSayWhy)
{
    engine->FillImage() = {2480, 3508, 300.0f, 300.0f};
    const QString image = Touch(u"scan.bmp"_s);
    dw.GetImageInformation(image);
    EXPECT_EQ(dw.GetImageWidth(), 20997);   // 20997.33
    EXPECT_EQ(dw.GetImageHeight(), 29701);  // 29701.07
    // Halves go to the even number; the steps in their order leave 7 pixels a hair below 3.5.
    for (const auto& [pixels, expected] : {std::pair{3, 2}, {5, 2}, {7, 3}}) {
        engine->FillImage() = {pixels, pixels, 5080.0f, 5080.0f};
        EXPECT_EQ(dw.GetImageWidth(), expected) << pixels;
        EXPECT_EQ(dw.GetImageHeight(), expected) << pixels;
    }
    engine->FillImage() = {1, 1, 0.0f, 0.0f};
    EXPECT_EQ(Raised([&] { (void)dw.GetImageWidth(); }), u"6 : オーバーフローしました。"_s);

    for (const auto& [mm, pixels, target, expected] :
         {std::tuple{1, 2, 1, 0}, {3, 2, 1, 2}, {5, 2, 1, 2}, {7, 2, 1, 4}, {-1, 2, 1, 0}, {-3, 2, 1, -2},
          {210, 2480, 1240, 105}, {297, 3508, 1000, 85}})
        EXPECT_EQ(DocuWorksClass::ConvertMillimeter(mm, pixels, target), expected) << mm << "/" << pixels;
    EXPECT_EQ(Raised([] { DocuWorksClass::ConvertMillimeter(1, 0, 1); }), u"6 : オーバーフローしました。"_s);

    // In use is tried 31 times; what remains is told by the kind of result.
    const QString head = u"6800 : GetImageInformation: ErrorNo="_s;
    const QString what = u"DW変換前の画像解像度を取得する処理でエラーが発生しました。"_s;
    const QString file = u"FileName = \""_s + image + u'"';
    engine->FailNext(u"ReadImageFile"_s, XdwResult::FileInUse, 31);
    EXPECT_EQ(Raised([&] { dw.GetImageInformation(image); }),
              head + u"-2147024864 "_s + what + CommonLibClass::LastDllErrorText(0x20) + file);
    EXPECT_EQ(engine.pauses.size(), 31u);
    engine->FailNext(u"ReadImageFile"_s, XdwResult::Unexpected);
    EXPECT_EQ(Raised([&] { dw.GetImageInformation(image); }),
              head + u"-2147418113 "_s + what + u"予期しないエラーが発生しました。(COM ERROR)"_s + file);
    engine->FailNext(u"ReadImageFile"_s, 3);
    EXPECT_EQ(Raised([&] { dw.GetImageInformation(image); }), head + u"3 "_s + what + u"対応していない画像形式です。"_s + file);
}

TEST_F(DocuWorksClassWork, RetryOpenCheckOfNoSecondsMakesNoTry)
{
    const QString path = Script(u"a.xdw"_s, 1);
    EXPECT_FALSE(dw.RetryOpenCheck(path, 0));
    EXPECT_EQ(engine->Calls(u"OpenDocument"_s), 0);
    EXPECT_TRUE(dw.RetryOpenCheck(path, 1));
    EXPECT_FALSE(dw.OpenCheck(Script(u"a.pdf"_s, 1)));
    EXPECT_EQ(engine->OpenDocuments(), 0);
    engine->SetAnswers(u"IsEnabledForOcr"_s, {u"1"_s});
    EXPECT_TRUE(dw.IsEnabledForOcr());
    EXPECT_EQ(DocuWorksClass::GetProcessId(), QCoreApplication::applicationPid());
}
