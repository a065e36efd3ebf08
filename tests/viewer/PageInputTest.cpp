#include "common/RecordingPresenter.h"
#include "viewer/NumericText.h"
#include "viewer/UpDownArrows.h"
#include "viewer/frmPageInput.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Preview {
    qint32 TabNo;
    QString FileName;
    qint16 Page;
    bool operator==(const Preview&) const = default;
};

// A dialog as the window sets it up for a 12-page file on tab 7 at page 3, recording previews.
class PageInputTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        dialog.SetTotalPage(12);
        dialog.SetPage(3);
        dialog.SetFileName(u"/data/文書.xdw"_s);
        dialog.SetTabNo(7);
    }

    void Type(const QString& vText)
    {
        dialog.txtPageJump()->setText(vText);
    }

    std::vector<Preview> previews;
    frmPageInput dialog{nullptr, [this](qint32 vTabNo, const QString& vFileName, qint16 vPage) {
        previews.push_back({vTabNo, vFileName, vPage});
    }};
    ScopedRecordingPresenter shown;
};

} // namespace

TEST(NumericTextTest, PlainNumbersInEitherWidthRoundHalfToEven)
{
    EXPECT_EQ(WholeNumberOfText(u"12"_s), 12.0);
    EXPECT_EQ(WholeNumberOfText(u" １２ "_s), 12.0);
    EXPECT_EQ(WholeNumberOfText(u"－３"_s), -3.0);
    EXPECT_EQ(WholeNumberOfText(u"+4"_s), 4.0);
    EXPECT_EQ(WholeNumberOfText(u"2.5"_s), 2.0);
    EXPECT_EQ(WholeNumberOfText(u"3.5"_s), 4.0);
    EXPECT_EQ(WholeNumberOfText(u".6"_s), 1.0);
    EXPECT_EQ(WholeNumberOfText(u"7."_s), 7.0);
    EXPECT_GT(*WholeNumberOfText(QString(400, u'9')), 1e300);  // out of range, not "no number"
    for (const QString& text : {u""_s, u"abc"_s, u"1e3"_s, u"1,000"_s, u"5-"_s, u"."_s, u"1.2.3"_s})
        EXPECT_FALSE(WholeNumberOfText(text).has_value()) << text.toStdString();
}

TEST_F(PageInputTest, SettingUpFillsTheControlsWithoutPreviewing)
{
    EXPECT_EQ(dialog.windowTitle(), u"ページ指定"_s);
    EXPECT_EQ(dialog.cmdUpdate()->text(), u"表示更新"_s);
    EXPECT_EQ(dialog.lblPageJump()->text(), u"/12"_s);
    EXPECT_EQ(dialog.txtPageJump()->text(), u"3"_s);
    EXPECT_EQ(dialog.slPageJump()->minimum(), 1);
    EXPECT_EQ(dialog.slPageJump()->maximum(), 12);
    EXPECT_EQ(dialog.slPageJump()->value(), 3);
    EXPECT_FALSE(dialog.slPageJump()->isHidden());
    EXPECT_EQ(dialog.Page(), 3);
    EXPECT_FALSE(dialog.Cancel());
    EXPECT_TRUE(previews.empty());

    // A one-page file has nothing to slide over.
    dialog.SetTotalPage(1);
    EXPECT_TRUE(dialog.slPageJump()->isHidden());
    EXPECT_EQ(dialog.lblPageJump()->text(), u"/1"_s);
    dialog.SetTotalPage(2);
    EXPECT_FALSE(dialog.slPageJump()->isHidden());
    EXPECT_TRUE(previews.empty());
}

TEST_F(PageInputTest, BadPagesAreRefusedWithAMessageAndTheDialogStays)
{
    dialog.show();
    const QString range = u"ページは1～12の範囲で指定してください。"_s;
    const std::pair<QString, QString> cases[] = {
        {u"abc"_s, u"ページは数字で指定してください。"_s},
        {u""_s, u"ページは数字で指定してください。"_s},
        {u"13"_s, range},
        {u"0"_s, range},
        {u"-2"_s, range},
        {u"99999999"_s, range},
    };
    for (const auto& [text, message] : cases) {
        shown.Clear();
        Type(text);
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
        ASSERT_EQ(shown.Count(), 1) << text.toStdString();
        EXPECT_EQ(shown.Last().text, message) << text.toStdString();
        EXPECT_EQ(shown.Last().kind, MessagePresenter::Kind::Error);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(dialog.Page(), 3);

        // The preview button checks the same way and draws nothing.
        shown.Clear();
        QTest::mouseClick(dialog.cmdUpdate(), Qt::LeftButton);
        EXPECT_EQ(shown.Last().text, message);
    }
    EXPECT_TRUE(previews.empty());
}

TEST_F(PageInputTest, UpdatePreviewsWithoutConfirmingAndOkConfirms)
{
    dialog.show();
    Type(u"１２"_s);
    QTest::mouseClick(dialog.cmdUpdate(), Qt::LeftButton);
    EXPECT_EQ(previews, (std::vector<Preview>{{7, u"/data/文書.xdw"_s, 12}}));
    EXPECT_EQ(dialog.Page(), 3);
    EXPECT_TRUE(dialog.isVisible());

    Type(u"5"_s);
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_EQ(shown.Count(), 0);
    EXPECT_EQ(dialog.Page(), 5);
    EXPECT_FALSE(dialog.Cancel());
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(previews.size(), 1u);  // confirming draws nothing itself: the window does
}

TEST_F(PageInputTest, EverySliderStepIsPreviewedAndNothingIsConfirmed)
{
    dialog.show();
    QTest::keyClick(dialog.slPageJump(), Qt::Key_Right);
    QTest::keyClick(dialog.slPageJump(), Qt::Key_Right);
    QTest::keyClick(dialog.slPageJump(), Qt::Key_End);
    EXPECT_EQ(previews, (std::vector<Preview>{{7, u"/data/文書.xdw"_s, 4},
                                              {7, u"/data/文書.xdw"_s, 5},
                                              {7, u"/data/文書.xdw"_s, 12}}));
    EXPECT_EQ(dialog.txtPageJump()->text(), u"12"_s);
    EXPECT_EQ(dialog.Page(), 3);

    QTest::mouseClick(dialog.cmdCancel(), Qt::LeftButton);
    EXPECT_TRUE(dialog.Cancel());
    EXPECT_EQ(dialog.Page(), 3);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(PageInputTest, CancelByButtonOrEscapeAndANewShowingStartsUndecided)
{
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog.Cancel());
    EXPECT_FALSE(dialog.isVisible());

    dialog.show();
    EXPECT_FALSE(dialog.Cancel());
}

TEST_F(PageInputTest, ArrowsOnlyChangeTheTextWithinOneAndTheTotal)
{
    auto up = [&] { QTest::mouseClick(dialog.UpDown()->UpButton(), Qt::LeftButton); };
    auto down = [&] { QTest::mouseClick(dialog.UpDown()->DownButton(), Qt::LeftButton); };
    dialog.show();
    up();
    EXPECT_EQ(dialog.txtPageJump()->text(), u"4"_s);
    Type(u"12"_s);
    up();
    EXPECT_EQ(dialog.txtPageJump()->text(), u"12"_s);
    down();
    EXPECT_EQ(dialog.txtPageJump()->text(), u"11"_s);
    Type(u"1"_s);
    down();
    EXPECT_EQ(dialog.txtPageJump()->text(), u"1"_s);
    Type(u"x"_s);
    down();
    EXPECT_EQ(dialog.txtPageJump()->text(), u"1"_s);
    Type(u"x"_s);
    up();
    EXPECT_EQ(dialog.txtPageJump()->text(), u"1"_s);
    Type(u"40"_s);  // typed beyond the total: stepped back towards it
    down();
    EXPECT_EQ(dialog.txtPageJump()->text(), u"39"_s);
    EXPECT_EQ(dialog.slPageJump()->value(), 3);
    EXPECT_TRUE(previews.empty());
    EXPECT_EQ(dialog.Page(), 3);
}

TEST_F(PageInputTest, ExecReturnsWhenTheDialogHides)
{
    QTimer::singleShot(0, &dialog, [this] {
        Type(u"8"_s);
        dialog.cmdOK()->click();
    });
    dialog.exec();
    EXPECT_EQ(dialog.Page(), 8);
    EXPECT_FALSE(dialog.Cancel());

    QTimer::singleShot(0, &dialog, [this] { dialog.cmdCancel()->click(); });
    dialog.exec();
    EXPECT_TRUE(dialog.Cancel());
    EXPECT_EQ(dialog.Page(), 8);
}
