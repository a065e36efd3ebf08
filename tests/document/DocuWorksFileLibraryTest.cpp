// One document's operations beyond the viewer's: pages to files, editing, text, OCR,
// attributes, binders and original data.
#include "document/DocumentTesting.h"

#include "document/DocuWorksClass.h"
#include "document/DocuWorksFileClass.h"

#include <functional>

using namespace Qt::Literals::StringLiterals;
using namespace documenttesting;

namespace {

const QString Denied = u"認証に失敗したため文書を開くことができません、または認可されていない操作を行いました。"_s;

class DocuWorksFileLibrary : public DocumentTest {
protected:
    void SetUp() override
    {
        path = Script(u"a.xdw"_s, 3);
        file = dw.OpenXdw(path, 1);
    }
    QString path;
    DocuWorksClass dw;
    std::shared_ptr<DocuWorksFileClass> file;
};

} // namespace

TEST_F(DocuWorksFileLibrary, EveryRuntimeFailureNamesItsOperation)
{
    DocuWorksFileClass& f = *file;
    const QString out = dir.filePath(u"written.x"_s);     // the conversions write it
    const QString fresh = dir.filePath(u"fresh.x"_s);     // nobody does
    const QString other = Script(u"other.xdw"_s, 1);
    const std::vector<std::pair<QString, std::function<void()>>> calls = {
        {u"SaveDocument"_s, [&] { f.SaveDocument(); }},
        {u"GetDocumentInformationInBinder"_s, [&] { f.GetDocumentInformationInBinder(1); }},
        {u"GetPageColorInformation"_s, [&] { f.GetPageColorInformation(1); }},
        {u"ConvertPageToImageFile"_s, [&] { f.ConvertPageToImageFile(1, out, 100, 0, u"DIB"_s); }},
        {u"ConvertPageToImageFileEx"_s, [&] { f.ConvertPageToImageFileEx(1, out, 100, 0, 0, 100, 0, 100); }},
        {u"ConvertPageToThumbnailImageFile"_s, [&] { f.ConvertPageToThumbnailImageFile(1, out); }},
        {u"GetPage"_s, [&] { f.GetPage(1, out); }},
        {u"InsertDocument"_s, [&] { f.InsertDocument(1, other); }},
        {u"DeletePage"_s, [&] { f.DeletePage(1); }},
        {u"RotatePage"_s, [&] { f.RotatePage(1, 90); }},
        {u"ReducePageNoise"_s, [&] { f.ReducePageNoise(1, u"NORMAL"_s); }},
        {u"GetTextPosition"_s, [&] { f.GetTextPosition(1); }},
        {u"SetOcrOptionV7ClearRect"_s, [&] { f.SetOcrOptionV7ClearRect(); }},
        {u"SetOcrOptionV7AddRect"_s, [&] { f.SetOcrOptionV7AddRect(0, 0, 10, 10); }},
        {u"SetUserAttribute"_s, [&] { f.SetUserAttribute(u"n"_s, u"v"_s); }},
        {u"DeleteUserAttribute"_s, [&] { f.DeleteUserAttribute(u"n"_s); }},
        {u"SetDocumentAttribute"_s, [&] { f.SetDocumentAttribute(u"n"_s, u"v"_s, u"STRING"_s); }},
        {u"DeleteDocumentAttribute"_s, [&] { f.DeleteDocumentAttribute(u"n"_s); }},
        {u"SucceedAttribute"_s, [&] { f.SucceedAttribute(out, 1, 0); }},
        {u"GetDocumentNameInBinder"_s, [&] { f.GetDocumentNameInBinder(1); }},
        {u"GetDocumentFromBinder"_s, [&] { f.GetDocumentFromBinder(1, fresh); }},
        {u"DeleteDocumentInBinder"_s, [&] { f.DeleteDocumentInBinder(1); }},
        {u"InsertOriginalData"_s, [&] { f.InsertOriginalData(1, out); }},
        {u"DeleteOriginalData"_s, [&] { f.DeleteOriginalData(1); }},
        {u"GetFileNameOfOriginalData"_s, [&] { f.GetFileNameOfOriginalData(1); }},
        {u"GetFileFromOriginalData"_s, [&] { f.GetFileFromOriginalData(1, fresh); }},
        {u"ShowAndHideAnnotation"_s, [&] { f.ShowAndHideAnnotation(true); }},
    };
    for (const auto& [name, call] : calls) {
        engine->FailNext(name, XdwResult::AccessDenied);
        EXPECT_EQ(Raised(call), u"6300 : "_s + name + u" : "_s + Denied);
        EXPECT_EQ(Raised(call), QString()) << name.toStdString();  // the failure was for one call only
    }
    // Each chose this document first.
    EXPECT_EQ(engine->Calls(u"SaveDocument"_s), 2);
}

TEST_F(DocuWorksFileLibrary, PagesToFilesCheckColourThenResolutionAndChooseAKindWhenNoneWasChosen)
{
    const QString out = dir.filePath(u"p.tif"_s);
    const QString prefix = u"6300 : ConvertPageToImageFile : "_s;
    const QString dpi = prefix + u"解像度は10～600dpiを指定してください。"_s;
    EXPECT_EQ(Raised([&] { file->ConvertPageToImageFile(1, out, 0, 0, u"TIFF"_s); }), dpi);  // no automatic here
    EXPECT_EQ(Raised([&] { file->ConvertPageToImageFile(1, out, 601, 0, u"JPEG"_s); }), dpi);
    EXPECT_EQ(engine->Calls(u"ConvertPageToImageFile"_s), 0);

    // Nothing chosen: TIFF with PACKBITS, JPEG and PDF both with the JPEG setting, others none.
    struct Case { QString type, setter; QStringList args; };
    for (const Case& c : {Case{u"TIFF"_s, u"SetImageTiff"_s, {u"PACKBITS"_s, u"0"_s}},
                          {u"JPEG"_s, u"SetImageJpeg"_s, {u"NORMAL"_s}}, {u"PDF"_s, u"SetImageJpeg"_s, {u"NORMAL"_s}},
                          {u"DIB"_s, QString(), {}}}) {
        DocuWorksFileClass fresh;
        fresh.OpenXdw(path, 1);
        engine->ClearLog();
        fresh.ConvertPageToImageFile(2, out, 10, 1, c.type);
        const QStringList expected = c.setter.isEmpty() ? QStringList{u"ConvertPageToImageFile"_s}
                                                        : QStringList{c.setter, u"ConvertPageToImageFile"_s};
        EXPECT_EQ(engine->Names(), expected) << c.type.toStdString();
        EXPECT_EQ(engine->Last(c.setter), c.args);
        EXPECT_EQ(engine->Last(u"ConvertPageToImageFile"_s), QStringList({u"2"_s, out, u"10"_s, u"1"_s, c.type}));
    }

    // G4 has no colour, and that is told before the resolution.
    file->SetImageTiff(u"G4"_s, 1);
    EXPECT_EQ(file->ImageCompress(), u"G4"_s);
    EXPECT_EQ(Raised([&] { file->ConvertPageToImageFile(1, out, 0, 1, u"TIFF"_s); }),
              prefix + u"G4圧縮の場合カラー指定はできません。"_s);
    EXPECT_EQ(Raised([&] { file->ConvertPageToImageFile(1, out, 0, 0, u"TIFF"_s); }), dpi);
    engine->ClearLog();
    file->ConvertPageToImageFile(1, out, 600, 1, u"PDF"_s);
    EXPECT_EQ(engine->Names(), QStringList{u"ConvertPageToImageFile"_s});  // a choice made stays
    file->SetImagePdf(u"HIGHQUALITY"_s, 0, u"IMAGE"_s);
    EXPECT_EQ(file->ImageCompress() + u'/' + file->ImageOption(), u"HIGHQUALITY/IMAGE"_s);
    EXPECT_EQ(engine->Last(u"SetImagePdf"_s), QStringList({u"HIGHQUALITY"_s, u"0"_s, u"IMAGE"_s}));
}

TEST_F(DocuWorksFileLibrary, APartOfAPageChecksResolutionThenXThenY)
{
    const QString out = dir.filePath(u"part.png"_s);
    const QString p = u"6300 : ConvertPageToImageFileEx : "_s;
    struct Case { qint32 dpi, xs, xe, ys, ye; QString text; };
    for (const Case& c : {Case{9, -1, -1, -1, -1, p + u"解像度は10～600dpiを指定してください。"_s},
                          {10, -1, 101, -1, -1, p + u"X開始位置は0～100を指定してください。"_s},
                          {10, 0, 101, -1, -1, p + u"X終了位置は0～100を指定してください。"_s},
                          {10, 50, 50, -1, -1, p + u"X開始位置はX終了位置より小さい値で指定してください。"_s},
                          {10, 60, 50, -1, -1, p + u"X開始位置はX終了位置より小さい値で指定してください。"_s},
                          {10, 0, 100, 101, -1, p + u"Y開始位置は0～100を指定してください。"_s},
                          {10, 0, 100, 0, -1, p + u"Y終了位置は0～100を指定してください。"_s},
                          {10, 0, 100, 100, 100, p + u"Y開始位置はY終了位置より小さい値で指定してください。"_s},
                          {600, 0, 1, 99, 100, QString()}})
        EXPECT_EQ(Raised([&] { file->ConvertPageToImageFileEx(1, out, c.dpi, 0, c.xs, c.xe, c.ys, c.ye); }), c.text)
            << c.dpi << " " << c.xs << "-" << c.xe << " " << c.ys << "-" << c.ye;
    EXPECT_EQ(engine->Last(u"ConvertPageToImageFileEx"_s),
              QStringList({u"1"_s, out, u"600"_s, u"0"_s, u"0"_s, u"1"_s, u"99"_s, u"100"_s}));
    EXPECT_EQ(engine->Calls(u"ConvertPageToImageFileEx"_s), 1);
}

TEST_F(DocuWorksFileLibrary, TextOfAPageWithoutTextIsEmptyAndWordRectanglesBecomeATree)
{
    engine->SetAnswers(u"GetPageTextToMemory"_s, {u"本文"_s});
    EXPECT_EQ(file->GetPageTextToMemory(1), u"本文"_s);
    engine->FailNext(u"GetPageTextToMemory"_s, XdwResult::InvalidOperation);
    EXPECT_EQ(file->GetPageTextToMemory(2), QString());
    engine->FailNext(u"GetPageTextToMemory"_s, XdwResult::AccessDenied);
    EXPECT_EQ(Raised([&] { file->GetPageTextToMemory(2); }), u"6300 : GetPageTextToMemory : "_s + Denied);

    engine->SetAnswers(u"GetTextPosition"_s, {u"10,20,30,40,0|50,60,70,80,1/90,100,110,120,2/7/"_s, QString()});
    file->GetTextPosition(1);
    const SDC tree = file->TextPosition();
    ASSERT_EQ(tree->Count(), 6);
    auto row = [&](qint16 vNo) {
        const SDC r = tree->ThreadOfNumber(vNo);
        return r->GetAllDataKey(u","_s) + u'=' + r->GetAllDataValue(u","_s);
    };
    EXPECT_EQ(row(1), u"X,Y,Width,Height,Status,WordIndex,RectIndex=10,20,30,40,0,1,1"_s);
    EXPECT_EQ(row(2), u"X,Y,Width,Height,Status,WordIndex,RectIndex=50,60,70,80,1,1,2"_s);
    EXPECT_EQ(row(3), u"X,Y,Width,Height,Status,WordIndex,RectIndex=90,100,110,120,2,2,1"_s);
    EXPECT_EQ(row(4), u"X,Y,Width,Height,Status,WordIndex,RectIndex=7,,,,,3,1"_s);  // short: the rest empty
    EXPECT_EQ(tree->DataValue(u"WordCount"_s) + u'/' + tree->DataValue(u"RectCount"_s), u"3/4"_s);
    // A page without words leaves only the totals, and the old tree goes.
    file->GetTextPosition(2);
    EXPECT_EQ(file->TextPosition()->GetAllDataKey(u","_s) + u'=' + file->TextPosition()->GetAllDataValue(u","_s),
              u"WordCount,RectCount=0,0"_s);
    EXPECT_EQ(tree->Count(), 0);
}

TEST_F(DocuWorksFileLibrary, OcrTreatsImagePagesWithItsOptionsInTheirOrder)
{
    ScriptedPage fromApp;
    fromApp.pageType = 2;
    engine->Document(path)->pages[0] = fromApp;
    file->ApplyOcr(1);  // made by an application: nothing to read, nothing said
    file->ApplyOcrV7(1);
    file->ClearOcrData(1);
    EXPECT_EQ(engine->Calls(u"ApplyOcr"_s) + engine->Calls(u"ApplyOcrV7"_s) + engine->Calls(u"ClearOcrData"_s), 0);

    file->ApplyOcr(2);
    EXPECT_EQ(engine->Last(u"SetOcrOptions"_s), QStringList({u"NONE"_s, u"JAPANESE"_s, u"false"_s, u"true"_s, u"AUTO"_s,
                                                             u"AUTO"_s, u"true"_s, u"true"_s}));
    EXPECT_EQ(engine->Last(u"ApplyOcr"_s), QStringList{u"2"_s});
    file->ApplyOcrV7(2);
    EXPECT_EQ(engine->Last(u"SetOcrOptionsV7"_s),
              QStringList({u"NONE"_s, u"JAPANESE"_s, u"false"_s, u"AUTO"_s, u"AUTO"_s, u"true"_s, u"true"_s, u"true"_s,
                           u"STANDARD"_s, u"BALANCED"_s, u"true"_s}));
    file->Ocr().language = u"ENGLISH"_s;
    file->Ocr().japaneseKnowledgeProcessing = false;
    file->ApplyOcr(3);
    EXPECT_EQ(engine->Last(u"SetOcrOptions"_s).mid(1, 3), QStringList({u"ENGLISH"_s, u"false"_s, u"false"_s}));

    // All pages, page types unasked; options once; the first failure stops and is told as the
    // single page's.
    engine->ClearLog();
    file->ApplyOcrAllV7();
    EXPECT_EQ(engine->Names().count(u"SetOcrOptionsV7"_s), 1);
    EXPECT_EQ(engine->Names().count(u"ApplyOcrV7"_s), 3);
    engine->FailNext(u"ApplyOcr"_s, XdwResult::Success);
    engine->FailNext(u"ApplyOcr"_s, XdwResult::OutOfMemory);
    engine->ClearLog();
    EXPECT_EQ(Raised([&] { file->ApplyOcrAll(); }), u"6300 : ApplyOcr : メモリーの獲得に失敗しました。"_s);
    EXPECT_EQ(engine->Names().count(u"ApplyOcr"_s), 2);
    engine->FailNext(u"ApplyOcrV7"_s, XdwResult::OutOfMemory);
    EXPECT_EQ(Raised([&] { file->ApplyOcrAllV7(); }), u"6300 : ApplyOcrV7 : メモリーの獲得に失敗しました。"_s);

    file->SetOcrOptionV7AddRect(100, 200, 300, 400);
    EXPECT_EQ(engine->Last(u"SetOcrOptionV7AddRect"_s), QStringList({u"100"_s, u"200"_s, u"400"_s, u"600"_s}));
    EXPECT_EQ(Raised([&] { file->SetOcrOptionV7AddRect(2147483000, 0, 1000, 0); }), u"6 : オーバーフローしました。"_s);
    engine->ClearLog();
    file->ClearOcrData(2);
    EXPECT_EQ(engine->Last(u"SetClearOcrDataOptions"_s), QStringList({u"0"_s, u"0"_s, u"1"_s, u""_s}));
    EXPECT_EQ(engine->Names().mid(engine->Names().size() - 2),
              QStringList({u"SetClearOcrDataOptions"_s, u"ClearOcrData"_s}));
}

TEST_F(DocuWorksFileLibrary, AttributeNamesCountBytesAndEachOperationSaysItsOwnName)
{
    const QString longest = FullWidth(127) + u"a"_s, tooLong = FullWidth(128);
    const QString text = u"属性名は255文字以内で設定してください。"_s;
    const std::vector<std::pair<QString, std::function<void(const QString&)>>> calls = {
        {u"SetUserAttribute"_s, [&](const QString& n) { file->SetUserAttribute(n, u"v"_s); }},
        {u"GetUserAttribute"_s, [&](const QString& n) { file->GetUserAttribute(n); }},
        {u"SetUserAttribute"_s, [&](const QString& n) { file->DeleteUserAttribute(n); }},  // the setter's name
        {u"SetDocumentAttribute"_s, [&](const QString& n) { file->SetDocumentAttribute(n, u"v"_s, u"STRING"_s); }},
        {u"GetDocumentAttribute"_s, [&](const QString& n) { file->GetDocumentAttribute(n); }},
        {u"DeleteDocumentAttribute"_s, [&](const QString& n) { file->DeleteDocumentAttribute(n); }},
    };
    for (const auto& [name, call] : calls) {
        EXPECT_EQ(Raised([&] { call(tooLong); }), u"6300 : "_s + name + u" : "_s + text);
        EXPECT_EQ(Raised([&] { call(longest); }), QString()) << name.toStdString();
    }

    // Absent reads as empty; another failure is told.
    EXPECT_EQ(file->GetUserAttribute(u"none"_s), QString());
    file->SetUserAttribute(u"係"_s, u"総務"_s);
    EXPECT_EQ(file->GetUserAttribute(u"係"_s), u"総務"_s);
    engine->FailNext(u"GetUserAttribute"_s, XdwResult::AccessDenied);
    EXPECT_EQ(Raised([&] { file->GetUserAttribute(u"係"_s); }), u"6300 : GetUserAttribute : "_s + Denied);
    engine->FailNext(u"GetDocumentAttribute"_s, XdwResult::AccessDenied);
    EXPECT_EQ(Raised([&] { file->GetDocumentAttribute(u"x"_s); }), u"6300 : GetDocumentAttribute : "_s + Denied);
    EXPECT_EQ(file->GetDocumentAttribute(u"none"_s), QString());
}

TEST_F(DocuWorksFileLibrary, DocumentAttributeTypesCheckTheirValuesAndConvertBothWays)
{
    const QString p = u"6300 : SetDocumentAttribute : "_s;
    struct Refusal { QString value, type, text; };
    for (const Refusal& r : {Refusal{u"12345678x9"_s, u"INTEGER"_s, p + u"TypeがIntegerの場合Valueは9桁以内で設定してください。"_s},
                             {u"1234567890"_s, u"Integer"_s, p + u"TypeがIntegerの場合Valueは9桁以内で設定してください。"_s},
                             {u"12a"_s, u"integer"_s, p + u"TypeがIntegerの場合Valueは数値で設定してください。"_s},
                             {u"2023/02/29"_s, u"DATE"_s, p + u"TypeがDateの場合Valueは日付形式で設定してください。"_s},
                             {u"yes"_s, u"Bool"_s, p + u"TypeがBoolの場合ValueはTrue又はFalseで設定してください。"_s},
                             {u"1"_s, u"LONG"_s, p + u"TypeはInteger,String,Date,Boolの何れかを設定してください。"_s}})
        EXPECT_EQ(Raised([&] { file->SetDocumentAttribute(u"n"_s, r.value, r.type); }), r.text) << r.value.toStdString();
    EXPECT_EQ(engine->Calls(u"SetDocumentAttribute"_s), 0);

    // Stored as the runtime keeps them, and read back in the user's words.
    struct Case { QString name, value, type, stored; qint16 number; QString read; };
    for (const Case& c : {Case{u"件数"_s, u"123456789"_s, u"integer"_s, u"123456789"_s, 0, u"123456789"_s},
                          {u"件名"_s, u"見積"_s, u"String"_s, u"見積"_s, 1, u"見積"_s},
                          {u"期日"_s, u"2001/09/09 01:46:40"_s, u"date"_s, u"1000000000"_s, 2, u"2001/09/09 1:46:40"_s},
                          {u"受付"_s, u"2024-02-29"_s, u"DATE"_s, u"1709164800"_s, 2, u"2024/02/29"_s},
                          {u"昔"_s, u"1969/12/31 23:59:59"_s, u"DATE"_s, u"-1"_s, 2, u"1969/12/31 23:59:59"_s},
                          {u"済"_s, u"true"_s, u"bool"_s, u"1"_s, 3, u"True"_s},
                          {u"未"_s, u"FALSE"_s, u"BOOL"_s, u"0"_s, 3, u"False"_s}}) {
        file->SetDocumentAttribute(c.name, c.value, c.type);
        EXPECT_EQ(engine->Last(u"SetDocumentAttribute"_s), QStringList({c.name, c.stored, QString::number(c.number)}));
        EXPECT_EQ(file->GetDocumentAttribute(c.name), c.read) << c.value.toStdString();
    }
    // Types the library doesn't know, and booleans that are neither, read as empty.
    engine->documentAttributes[u"謎"_s] = {u"x"_s, 7};
    engine->documentAttributes[u"半端"_s] = {u"2"_s, 3};
    EXPECT_EQ(file->GetDocumentAttribute(u"謎"_s) + file->GetDocumentAttribute(u"半端"_s), QString());
}

TEST_F(DocuWorksFileLibrary, FilesTakenOutOfBindersAndOriginalDataMustBeNew)
{
    const QString taken = Touch(u"taken.xdw"_s);
    const QString binder = u"6300 : GetDocumentFromBinder : "_s, original = u"6300 : GetFileFromOriginalData : "_s;
    EXPECT_EQ(Raised([&] { file->GetDocumentFromBinder(1, FullWidth(128)); }),
              binder + u"XDWファイル名は255バイト以下で指定してください。"_s);
    EXPECT_EQ(Raised([&] { file->GetDocumentFromBinder(1, taken); }), binder + taken + u"が既に存在します。"_s);
    EXPECT_EQ(Raised([&] { file->GetFileFromOriginalData(1, FullWidth(128)); }),
              original + u"オリジナルデータファイル名は255バイト以下で指定してください。"_s);
    EXPECT_EQ(Raised([&] { file->GetFileFromOriginalData(2, taken); }), original + taken + u"が既に存在します。"_s);
    EXPECT_EQ(engine->Calls(u"GetDocumentFromBinder"_s) + engine->Calls(u"GetFileFromOriginalData"_s), 0);

    engine->SetAnswers(u"GetFileNameOfOriginalData"_s, {u"見積.xlsx"_s});
    EXPECT_EQ(file->GetFileNameOfOriginalData(1), u"見積.xlsx"_s);
    engine->SetAnswers(u"GetDocumentNameInBinder"_s, {u"第1章"_s});
    EXPECT_EQ(file->GetDocumentNameInBinder(1), u"第1章"_s);
    file->GetDocumentInformationInBinder(1);
    EXPECT_EQ(file->Pages(), 3);
}

TEST_F(DocuWorksFileLibrary, RotatingByItselfTellsTheTableTextOfItsResult)
{
    file->RotatePageAuto(2);
    EXPECT_EQ(engine->Last(u"RotatePageAuto"_s), QStringList({QString::number(file->DocumentHandle()), u"2"_s}));
    engine->FailNext(u"RotatePageAuto"_s, XdwResult::InvalidOperation);
    engine->SetFailureText(u"RotatePageAuto"_s, u"not the table's text"_s);
    EXPECT_EQ(Raised([&] { file->RotatePageAuto(2); }),
              u"6300 : RotatePageAuto : 無効な操作(回転できないページに対して回転、白黒イメージでないページに対してノイズ除去等)を行いました。"_s);
}

TEST_F(DocuWorksFileLibrary, PermissionBitsReadAsFourFlags)
{
    for (const auto& [bits, flags] : {std::pair{0, u"...."_s}, {2, u"E..."_s}, {4, u".A.."_s}, {8, u"..P."_s},
                                      {16, u"...C"_s}, {30, u"EAPC"_s}, {1, u"...."_s}}) {
        engine->Document(path)->permission = static_cast<qint16>(bits);
        file->GetDocumentInformation();
        const QString read = QString(file->PermissionOfDocumentEdit() ? u'E' : u'.')
                             + (file->PermissionOfAnnotationEdit() ? u'A' : u'.') + (file->PermissionOfPrint() ? u'P' : u'.')
                             + (file->PermissionOfCopy() ? u'C' : u'.');
        EXPECT_EQ(read, flags) << bits;
    }
}
