#include "common/RecordingPresenter.h"
#include "viewer/NumericText.h"
#include "viewer/UpDownArrows.h"
#include "viewer/frmPageInput.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

using Preview = std::tuple<qint32, QString, qint16>;

// A shown dialog as the window sets it up for a 12-page file on tab 7 at page 3.
class PageInputTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        dialog.SetTotalPage(12);
        dialog.SetPage(3);
        dialog.SetFileName(u"/data/文書.xdw"_s);
        dialog.SetTabNo(7);
        dialog.show();
    }
    void Type(const QString& vText) { dialog.txtPageJump()->setText(vText); }
    static Preview At(qint16 vPage) { return {7, u"/data/文書.xdw"_s, vPage}; }

    std::vector<Preview> previews;
    frmPageInput dialog{nullptr, [this](qint32 vTabNo, const QString& vFileName, qint16 vPage) {
        previews.emplace_back(vTabNo, vFileName, vPage);
    }};
    ScopedRecordingPresenter shown;
};

} // namespace

TEST(NumericTextTest, NumbersInEitherWidthRoundHalfToEvenAndArrowsStepWithinTheBounds)
{
    const std::pair<QString, double> numbers[] = {{u" １２ "_s, 12}, {u"－３"_s, -3}, {u"2.5"_s, 2}, {u"3.5"_s, 4},
                                                  {u".6"_s, 1}, {u"7."_s, 7}};
    for (const auto& [text, value] : numbers)
        EXPECT_EQ(WholeNumberOfText(text), value) << text.toStdString();
    EXPECT_GT(*WholeNumberOfText(QString(400, u'9')), 1e300);  // out of range, not "no number"
    EXPECT_FALSE(WholeNumberOfText(u"1e3"_s).has_value());  // a parser would take it; a user means no amount

    // Typed beyond a bound, a number is only stepped back towards it; beyond 16 bits it stays.
    const std::tuple<QString, int, QString> steps[] = {{u"3"_s, 1, u"4"_s},    {u"12"_s, 1, u"12"_s},
                                                       {u"1"_s, -1, u"1"_s},   {u"40"_s, -1, u"39"_s},
                                                       {u"40"_s, 1, u"40"_s},  {u"-3"_s, 1, u"-2"_s},
                                                       {u"abc"_s, -1, u"1"_s}, {u"40000"_s, -1, u"40000"_s}};
    for (const auto& [text, delta, result] : steps)
        EXPECT_EQ(StepNumberText(text, delta, 1, 12), result) << text.toStdString() << " " << delta;
}

TEST_F(PageInputTest, SettingUpFillsTheControlsAndBadPagesAreRefusedByOkAndUpdateAlike)
{
    EXPECT_EQ(dialog.windowTitle(), u"ページ指定"_s);
    EXPECT_EQ(dialog.lblPageJump()->text(), u"/12"_s);
    EXPECT_EQ(dialog.txtPageJump()->text(), u"3"_s);
    EXPECT_EQ(dialog.slPageJump()->maximum(), 12);
    EXPECT_EQ(dialog.slPageJump()->value(), 3);

    const QString range = u"ページは1～12の範囲で指定してください。"_s;
    const std::pair<QString, QString> cases[] = {{u"abc"_s, u"ページは数字で指定してください。"_s},
                                                 {u""_s, u"ページは数字で指定してください。"_s},
                                                 {u"13"_s, range}, {u"0"_s, range}, {u"99999999"_s, range}};
    for (const auto& [text, message] : cases) {
        for (QPushButton* button : {dialog.cmdOK(), dialog.cmdUpdate()}) {
            shown.Clear();
            Type(text);
            QTest::mouseClick(button, Qt::LeftButton);
            ASSERT_EQ(shown.Count(), 1) << text.toStdString();
            EXPECT_EQ(shown.Last().text, message) << text.toStdString();
            EXPECT_EQ(shown.Last().kind, MessagePresenter::Kind::Error);
        }
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(dialog.Page(), 3);
    }
    EXPECT_TRUE(previews.empty());
}

TEST_F(PageInputTest, UpdateAndSliderPreviewArrowsOnlyTypeOkConfirmsAndOnePageHidesTheSlider)
{
    Type(u"１２"_s);
    QTest::mouseClick(dialog.cmdUpdate(), Qt::LeftButton);
    QTest::keyClick(dialog.slPageJump(), Qt::Key_Home);
    EXPECT_EQ(previews, (std::vector{At(12), At(1)}));
    EXPECT_EQ(dialog.txtPageJump()->text(), u"1"_s);
    // The arrows step up to the total, and draw nothing.
    Type(u"11"_s);
    QTest::mouseClick(dialog.UpDown()->UpButton(), Qt::LeftButton);
    QTest::mouseClick(dialog.UpDown()->UpButton(), Qt::LeftButton);
    EXPECT_EQ(dialog.txtPageJump()->text(), u"12"_s);
    EXPECT_EQ(previews.size(), 2u);
    EXPECT_EQ(dialog.Page(), 3);

    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_EQ(shown.Count(), 0);
    EXPECT_EQ(dialog.Page(), 12);
    EXPECT_FALSE(dialog.Cancel());
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(previews.size(), 2u);  // confirming draws nothing itself: the window does

    // A one-page file has nothing to slide over.
    dialog.SetTotalPage(1);
    EXPECT_TRUE(dialog.slPageJump()->isHidden());
    dialog.SetTotalPage(2);
    EXPECT_FALSE(dialog.slPageJump()->isHidden());
}

TEST_F(PageInputTest, CancelOrEscapeKeepThePageAndANewShowingStartsUndecided)
{
    Type(u"5"_s);
    QTest::mouseClick(dialog.cmdCancel(), Qt::LeftButton);
    EXPECT_TRUE(dialog.Cancel());
    EXPECT_EQ(dialog.Page(), 3);
    EXPECT_FALSE(dialog.isVisible());
    dialog.show();  // a new showing starts undecided
    EXPECT_FALSE(dialog.Cancel());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog.Cancel());
    EXPECT_FALSE(dialog.isVisible());
}
