// Annotations: the checks before one is made, in their order; reading them from pages; their
// properties; and the type and colour tables that users' macros name.
#include "document/DocumentTesting.h"

#include "document/DocuWorksAnnotationClass.h"
#include "document/DocuWorksClass.h"
#include "document/DocuWorksFileClass.h"

#include <functional>

using namespace Qt::Literals::StringLiterals;
using namespace documenttesting;

namespace {

class DocuWorksAnnotation : public DocumentTest {
protected:
    void SetUp() override
    {
        ScriptedPage page;
        page.annotations = 2;
        path = Script(u"a.xdw"_s, 2, page);
        file = dw.OpenXdw(path, 1);
    }
    QString path;
    DocuWorksClass dw;
    std::shared_ptr<DocuWorksFileClass> file;
};

// "name=value" of every entry of a thread, in order.
QStringList Entries(const SDC& vThread)
{
    QStringList entries;
    for (qint16 i = 1; i <= vThread->Count(); ++i)
        entries << vThread->DataKeyOfNumber(i) + u'=' + vThread->DataValueOfNumber(i);
    return entries;
}

} // namespace

TEST_F(DocuWorksAnnotation, AddingChecksPositionThenTheShapeOfItsTypeInOrder)
{
    const QString p = u"6300 : AddAnnotation : "_s;
    const QString xSmall = p + u"X座標には-240000より小さい値を設定できません。"_s;
    const QString ySmall = p + u"Y座標には-240000より小さい値を設定できません。"_s;
    const QString big = p + u"X座標には240000より大きい値を設定できません。"_s;
    const QString bitmap = Touch(u"logo.bmp"_s), noBitmap = dir.filePath(u"none.bmp"_s);
    DocuWorksFileClass& f = *file;
    using Add = std::function<void()>;
    const std::vector<std::pair<Add, QString>> cases = {
        {[&] { f.AddTextAnnotation(1, -240001, 240001); }, xSmall},
        {[&] { f.AddTextAnnotation(1, 240001, -240001); }, ySmall},
        {[&] { f.AddTextAnnotation(1, 240001, 0); }, big},
        {[&] { f.AddTextAnnotation(1, 0, 240001); }, big},  // Y too far down is told as X
        {[&] { f.AddTextAnnotation(1, -240000, 240000); }, QString()},
        {[&] { f.AddRectAnnotation(1, -240001, 0, 99, 99); }, xSmall},
        {[&] { f.AddRectAnnotation(1, 0, 0, 99, 99); }, p + u"幅には100より小さい値を設定できません。"_s},
        {[&] { f.AddRectAnnotation(1, 0, 0, 100, 99); }, p + u"高さには100より小さい値を設定できません。"_s},
        {[&] { f.AddRectAnnotation(1, 0, 0, 240001, 240001); }, p + u"幅には240000より大きい値を設定できません。"_s},
        {[&] { f.AddRectAnnotation(1, 0, 0, 240000, 240001); }, p + u"高さには240000より大きい値を設定できません。"_s},
        {[&] { f.AddRectAnnotation(1, 0, 0, 100, 100); }, QString()},
        {[&] { f.AddBitmapAnnotation(1, 0, 0, QString()); }, p + u"DIBファイルの指定がありません。"_s},
        {[&] { f.AddBitmapAnnotation(1, 0, 0, noBitmap); }, p + noBitmap + u"が見つかりません。"_s},
        {[&] { f.AddBitmapAnnotation(1, 0, 0, bitmap); }, QString()},
        {[&] { f.AddLineAnnotation(1, 0, 0, -240001, -240001); }, p + u"水平移動量には-240000より小さい値を設定できません。"_s},
        {[&] { f.AddLineAnnotation(1, 0, 0, 240001, -240001); }, p + u"垂直移動量には-240000より小さい値を設定できません。"_s},
        {[&] { f.AddLineAnnotation(1, 0, 0, 240001, 240001); }, p + u"水平移動量には240000より大きい値を設定できません。"_s},
        {[&] { f.AddLineAnnotation(1, 0, 0, 240000, 240001); }, p + u"垂直移動量には240000より大きい値を設定できません。"_s},
        {[&] { f.AddLineAnnotation(1, 0, 0, -240000, 240000); }, QString()},
        {[&] { f.AddFusenAnnotation(1, 0, 0, 499, 499); }, p + u"幅には500より小さい値を設定できません。"_s},
        {[&] { f.AddFusenAnnotation(1, 0, 0, 500, 499); }, p + u"高さには500より小さい値を設定できません。"_s},
        {[&] { f.AddFusenAnnotation(1, 0, 0, 50001, 50001); }, p + u"幅には50000より大きい値を設定できません。"_s},
        {[&] { f.AddFusenAnnotation(1, 0, 0, 50000, 50001); }, p + u"高さには50000より大きい値を設定できません。"_s},
        {[&] { f.AddFusenAnnotation(1, 0, 0, 500, 500); }, QString()},
        {[&] { f.AddLinkAnnotation(2, 0, 0); }, QString()},
        {[&] { f.AddDateStampAnnotation(2, 0, 0); }, QString()},
    };
    for (std::size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(Raised(cases[i].first), cases[i].second) << "case " << i;
    // Only those that passed reached the runtime, and joined the document's list.
    EXPECT_EQ(engine->Calls(u"AddAnnotation"_s), 7);
    EXPECT_EQ(file->RefDwAnnotationData()->Count(), 7);
}

TEST_F(DocuWorksAnnotation, TheRuntimeGetsTheSizeOfTheTypeAndAParentTakesItsOwnCall)
{
    const auto rect = file->AddRectAnnotation(2, 1000, 2000, 3000, 4000);
    EXPECT_EQ(engine->Last(u"AddAnnotation"_s),
              QStringList({u"2"_s, u"2"_s, u"1000"_s, u"2000"_s, u"3000"_s, u"4000"_s, u""_s}));
    EXPECT_EQ(rect->AnnotationHandle(), 0x2001);
    EXPECT_EQ(rect->DocumentHandle(), file->DocumentHandle());
    EXPECT_EQ(rect->Page() + rect->XPosition() + rect->YPosition(), 2 + 1000 + 2000);
    file->AddLineAnnotation(1, 0, 0, -500, 700);  // a line's run goes as its size
    EXPECT_EQ(engine->Last(u"AddAnnotation"_s).mid(4, 2), QStringList({u"-500"_s, u"700"_s}));

    const auto child = file->AddTextAnnotation(1, 10, 20, rect->AnnotationHandle());
    EXPECT_EQ(engine->Last(u"AddAnnotationOnParentAnnotation"_s),
              QStringList({u"1"_s, QString::number(0x2001), u"10"_s, u"20"_s, u"0"_s, u"0"_s, u""_s}));
    EXPECT_EQ(child->AnnotationHandle(), 0x2003);

    engine->FailNext(u"AddAnnotationOnParentAnnotation"_s, XdwResult::InvalidArg);
    EXPECT_EQ(Raised([&] { file->AddTextAnnotation(1, 0, 0, 99); }),
              u"6300 : AddAnnotationOnParentAnnotation : 関数の引数に仕様外の値を渡しました。"_s);
    engine->FailNext(u"AddAnnotation"_s, XdwResult::InvalidArg);
    EXPECT_EQ(Raised([&] { file->AddTextAnnotation(1, 0, 0); }), u"6300 : AddAnnotation : 関数の引数に仕様外の値を渡しました。"_s);
    EXPECT_EQ(file->RefDwAnnotationData()->Count(), 3);  // the failed ones stay out
}

TEST_F(DocuWorksAnnotation, AnnotationFilesCheckPositionThenTheFile)
{
    const QString p = u"6300 : AddAnnotationFile : "_s;
    const QString tool = Touch(u"stamp.xdwanntool"_s), missing = dir.filePath(u"none.ann"_s);
    struct Case { QString path; qint32 x, y; QString text; };
    for (const Case& c : {Case{QString(), -240001, 0, p + u"X座標には-240000より小さい値を設定できません。"_s},
                          {QString(), 0, -240001, p + u"Y座標には-240000より小さい値を設定できません。"_s},
                          {QString(), 0, 240001, p + u"X座標には240000より大きい値を設定できません。"_s},
                          {QString(), 0, 0, p + u"アノテーションツールファイルの指定がありません。"_s},
                          {missing, 0, 0, p + missing + u"が見つかりません。"_s}})
        EXPECT_EQ(Raised([&] { file->AddAnnotationFile(c.path, 1, c.x, c.y, true, false); }), c.text);
    const auto made = file->AddAnnotationFile(tool, 2, 5, 6, false, true, 0x77);
    EXPECT_EQ(engine->Last(u"AddAnnotationFromAnnFile"_s),
              QStringList({tool, u"2"_s, u"5"_s, u"6"_s, u"false"_s, u"true"_s, QString::number(0x77)}));
    EXPECT_EQ(made->AnnotationHandle(), 0x2001);
    engine->FailNext(u"AddAnnotationFromAnnFile"_s, XdwResult::BadFormat);
    EXPECT_EQ(Raised([&] { file->AddAnnotationFile(tool, 2, 5, 6, false, true); }),
              p + u"指定されたDocuWorks文書ファイルが正しいフォーマットではありません。"_s);
}

TEST_F(DocuWorksAnnotation, ReadingFillsTheFieldsAndALineItsRun)
{
    engine->annotations = {{0x31, 100, 200, 300, 400, 0, 32785}, {0x32, 500, 600, -700, 800, 0, 32828},
                           {0x33, 1, 2, 3, 4, 5, 12345}};
    DocuWorksAnnotationClass annotation;
    annotation.SetDocumentHandle(file->DocumentHandle());
    annotation.GetAnnotation(1, 1, 0);
    EXPECT_EQ(annotation.AnnotationType(), u"TEXT"_s);
    EXPECT_EQ(annotation.Index() + annotation.AnnotationHandle() + annotation.XPosition() + annotation.Height(),
              1 + 0x31 + 100 + 400);
    annotation.GetAnnotation(1, 2, 0);
    EXPECT_EQ(annotation.AnnotationType(), u"STRAIGHTLINE"_s);
    EXPECT_EQ(annotation.HorVec(), -700);
    EXPECT_EQ(annotation.VerVec(), 800);
    annotation.GetAnnotation(2, 3, 0x32);  // a type it doesn't know leaves the last one
    EXPECT_EQ(annotation.AnnotationType(), u"STRAIGHTLINE"_s);
    EXPECT_EQ(annotation.ChildAnnotations(), 5);
    EXPECT_EQ(engine->Last(u"GetAnnotationInformation"_s), QStringList({u"2"_s, u"3"_s, QString::number(0x32)}));
    EXPECT_EQ(Raised([&] { annotation.GetAnnotation(1, 4, 0); }),
              u"6300 : GetAnnotationInformation : 関数の引数に仕様外の値を渡しました。"_s);

    // A document reads each page's count of them; all of them, page by page.
    file->GetAnnotation(2);
    EXPECT_EQ(file->RefDwAnnotationData()->Count(), 2);
    file->GetAllAnnotation();
    const SDC list = file->RefDwAnnotationData();
    EXPECT_EQ(list->Count(), 6);
    list->BottomData();
    EXPECT_EQ(file->RefDwAnnotation()->Page(), 2);
    EXPECT_EQ(file->RefDwAnnotation()->AnnotationType(), u"STRAIGHTLINE"_s);
    file->ReleaseAllAnnotation();
    EXPECT_EQ(list->Count(), 0);

    EXPECT_EQ(file->GetAnnotationHandleFromNo(1, 2), 0x32);
    EXPECT_EQ(Raised([&] { file->GetAnnotationHandleFromNo(1, 9); }),
              u"6300 : アノテーション番号が不正です。 GetAnnotationHandleFromNo : 関数の引数に仕様外の値を渡しました。"_s);
    EXPECT_EQ(file->GetAnnoInfoHorPos(1, 2), 500);
    EXPECT_EQ(file->GetAnnoInfoVerPos(1, 1), 200);
}

TEST_F(DocuWorksAnnotation, PropertiesSelectDocumentAndAnnotationAndKeepTheValue)
{
    const auto note = file->AddFusenAnnotation(1, 0, 0, 5000, 5000);
    engine->SetAnswers(u"GetAnnotationAttribute"_s, {u"12"_s});
    engine->ClearLog();
    EXPECT_EQ(note->Property(u"FontSize"_s), u"12"_s);
    EXPECT_EQ(engine->Names(), QStringList({u"SelectAnnotationHandle"_s, u"GetAnnotationAttribute"_s}));
    EXPECT_EQ(engine->Last(u"SelectAnnotationHandle"_s), QStringList{QString::number(note->AnnotationHandle())});
    EXPECT_EQ(note->CachedProperty(u"FontSize"_s), u"12"_s);

    note->SetProperty(u"Text"_s, u"至急"_s);
    EXPECT_EQ(engine->Last(u"SetAnnotationAttribute"_s), QStringList({u"Text"_s, u"2"_s, u"至急"_s}));
    note->SetProperty(u"FillColor"_s, u"16761599"_s);
    EXPECT_EQ(engine->Last(u"SetAnnotationAttribute"_s), QStringList({u"FillColor"_s, u"0"_s, u"16761599"_s}));
    // Neither looks at the result.
    engine->FailNext(u"SetAnnotationAttribute"_s, XdwResult::AccessDenied);
    note->SetProperty(u"Url"_s, u"https://example.jp/"_s);
    EXPECT_EQ(note->CachedProperty(u"Url"_s), u"https://example.jp/"_s);
    EXPECT_EQ(Raised([&] { note->SetProperty(u"text"_s, u"x"_s); }), u"5 : プロシージャの呼び出し、または引数が不正です。"_s);

    note->RemoveAnnotation();
    engine->FailNext(u"RemoveAnnotation"_s, XdwResult::AccessDenied);
    EXPECT_EQ(Raised([&] { note->RemoveAnnotation(); }), u"6300 : RemoveAnnotation : 認証に失敗したため文書を開くことができません、または認可されていない操作を行いました。"_s);
}

TEST(DocuWorksAnnotationTables, PropertyNamesAndTheirDataTypes)
{
    EXPECT_EQ(DocuWorksAnnotationClass::PropertyNames().join(u','),
              u"Text,FontName,FontItalic,FontBold,FontUnderLine,FontStrikeOut,FontSize,ForeColor,FontPitchAndFamily,"
              u"FontCharSet,BackColor,WordWrap,AutoResize,TextDirection,TextOrientation,LineSpace,TextSpacing,"
              u"TextTopMargin,TextLeftMargin,TextBottomMargin,TextRightMargin,TextAutoResizeHeight,"
              u"Caption,Url,XdwPath,ShowIcon,LinkType,XdwPage,XdwNameInXbd,"
              u"BorderStyle,BorderWidth,BorderColor,BorderTransparent,ArrowheadType,ArrowheadStyle,FillStyle,FillColor,"
              u"FillTransparent,Invisible,"
              u"PageFrom,TopField,BottomField,DateStyle,YearField,MonthField,DayField,BasisYearStyle,BasisYear,"
              u"DateField_FirstChar,Alignment,LeftRightMargin,TopBottomMargin,VerPosition,StartingNumber,Digit,"
              u"PageRange,BeginningPage,EndingPage,Zoom,ImageFile"_s);
    QStringList texts;
    for (const QString& name : DocuWorksAnnotationClass::PropertyNames()) {
        if (DocuWorksAnnotationClass::PropertyDataType(name) == 2)
            texts << name;
    }
    EXPECT_EQ(texts.join(u','), u"Text,FontName,Caption,Url,XdwPath,XdwNameInXbd,TopField,BottomField,DateField_FirstChar,ImageFile"_s);
}

TEST(DocuWorksAnnotationTables, TypeCodesNamesAndJapaneseNames)
{
    QStringList rows;
    for (qint32 code : {32794, 32785, 32819, 32828, 32829, 32830, 32795, 49199, 32814, 32783, 32831, 32834, 32838,
                        32837, 32839}) {
        const QString type = DocuWorksAnnotationClass::TypeOfCode(code);
        rows << QString::number(code) + u' ' + type + u' ' + DocuWorksAnnotationClass::Japanese(type);
    }
    EXPECT_EQ(rows, QStringList({u"32794 FUSEN 付箋"_s, u"32785 TEXT テキスト"_s, u"32819 STAMP 日付印"_s,
                                 u"32828 STRAIGHTLINE 直線"_s, u"32829 RECTANGLE 矩形"_s, u"32830 ARC 楕円"_s,
                                 u"32795 MARKER フリーハンド/マーカー"_s, u"49199 LINK リンク"_s,
                                 u"32814 PAGEFORM 見出し/ページ番号"_s, u"32783 OLE OLE"_s, u"32831 BITMAP ビットマップ"_s,
                                 u"32834 POLYGON 多角形"_s, u"32838 TITLE タイトル"_s, u"32837 CUSTOM カスタム"_s,
                                 u"32839 GROUP グループ"_s}));
    EXPECT_EQ(DocuWorksAnnotationClass::TypeOfCode(0), QString());
    EXPECT_EQ(DocuWorksAnnotationClass::Japanese(u"fusen"_s) + DocuWorksAnnotationClass::Japanese(u"CIRCLE"_s), QString());
}

TEST(DocuWorksAnnotationTables, ColourTreeNamesEveryColourBothWays)
{
    ScopedScriptedEngine engine;
    DocuWorksAnnotationClass annotation;
    const SDC tree = annotation.ColorName();
    EXPECT_EQ(tree->GetAllDataKey(u","_s), u"色,基本色,背景色なし,色文字列,背景色文字列"_s);
    const QStringList basic = {u"黒=0"_s, u"茶色=128"_s, u"緑=32768"_s, u"オリーブ=32896"_s, u"紺=8388608"_s,
                               u"紫=8388736"_s, u"青緑=8421376"_s, u"灰色=8421504"_s, u"銀=12632256"_s, u"赤=255"_s,
                               u"黄緑=65280"_s, u"黄=65535"_s, u"青=16711680"_s, u"赤紫=16711935"_s, u"水色=16776960"_s,
                               u"白=16777215"_s};
    const QStringList fusen = {u"付箋赤=16761599"_s, u"付箋青=16760733"_s, u"付箋黄=6619135"_s, u"付箋緑=12779421"_s};
    EXPECT_EQ(Entries(tree->Thread(u"色"_s)), QStringList{u"背景色なし=65793"_s} + basic + fusen + QStringList{u"なし=65793"_s});
    EXPECT_EQ(Entries(tree->Thread(u"基本色"_s)), basic);
    EXPECT_EQ(Entries(tree->Thread(u"背景色なし"_s)), QStringList{u"背景色なし=65793"_s});
    QStringList reversed;
    for (const QString& entry : basic + fusen)
        reversed << entry.section(u'=', 1) + u'=' + entry.section(u'=', 0, 0);
    EXPECT_EQ(Entries(tree->Thread(u"色文字列"_s)), QStringList{u"65793=なし"_s} + reversed);
    EXPECT_EQ(Entries(tree->Thread(u"背景色文字列"_s)), QStringList{u"65793=背景色なし"_s} + reversed);

    EXPECT_EQ(annotation.GetColorName(65793), u"なし"_s);
    EXPECT_EQ(annotation.GetBackColorName(65793), u"背景色なし"_s);
    EXPECT_EQ(annotation.GetColorName(12779421), u"付箋緑"_s);
    EXPECT_EQ(annotation.GetColorName(1) + annotation.GetBackColorName(-1), QString());
    EXPECT_EQ(annotation.GetColorByName(u"付箋黄"_s), 6619135);
    EXPECT_EQ(annotation.GetColorByName(u"なし"_s), 65793);
    EXPECT_EQ(Raised([&] { (void)annotation.GetColorByName(u"金"_s); }), u"13 : 型が一致しません。"_s);
}
