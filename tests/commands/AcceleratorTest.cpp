#include "commands/AppAcceleratorKeyClass.h"
#include "commands/AppCommandListClass.h"
#include "commands/KeyEventCodes.h"
#include "support/AppError.h"

#include <QAction>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

namespace {

// The settings tree as the keyboard page stores its list: one row per binding, the key string
// in sub-item "1".
SDC KeyboardSettings(const QStringList& vKeyStrings)
{
    auto settings = std::make_shared<StructuredDataClass>();
    const SDC rows = settings->CreateThread(AppCommandListClass::KeyboardGroup)
                         ->CreateThread("livShortCutKey")
                         ->CreateThread("ListItem");
    for (const QString& key : vKeyStrings) {
        const SDC row = rows->CreateThread();
        row->AddData("次ページ", "Text");
        row->CreateThread("SubItem")->AddData(key, "1");
    }
    return settings;
}

// A shown, active main window with a text box holding the focus, and the key strings reported.
class AcceleratorTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        // The symbols below are read as the Japanese keyboard types them.
        keyeventcodes::SetKeyboardLayout(keyeventcodes::Layout::Japanese);
        main_.show();
        Activate(main_);
        edit_.setFocus();
    }

    static void Activate(QWidget& vWindow)
    {
        vWindow.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&vWindow));
    }

    QWindow* Window() { return main_.windowHandle(); }
    std::string Fired() const { return fired_.join(u'|').toStdString(); }

    QWidget main_;
    QLineEdit edit_{&main_};
    QStringList fired_;
    AppAcceleratorKeyClass keys_{&main_, [this](const QString& vKey) {
        fired_.append(vKey);
    }};
};

TEST_F(AcceleratorTest, RealKeyPressesReportTheRegisteredKeyStrings)
{
    keys_.SetAcceleratorKey(*KeyboardSettings({"Ctrl + Shift + A", "Shift + 1", "Num 5", "Alt + F4",
                                               "B", "Num +", "\\", "Shift + BackSlash"}));
    EXPECT_EQ(keys_.RegisteredKeys().size(), 8);
    EXPECT_EQ(keys_.ctlAccelerator1().Count(), 7);  // "Num +" names no key

    QTest::keyClick(Window(), Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(Window(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(Window(), Qt::Key_A);
    QTest::keyClick(Window(), Qt::Key_Exclam, Qt::ShiftModifier);
    QTest::keyClick(Window(), Qt::Key_5, Qt::KeypadModifier);
    QTest::keyClick(Window(), Qt::Key_5);
    QTest::keyClick(Window(), Qt::Key_F4, Qt::AltModifier);
    QTest::keyClick(Window(), Qt::Key_Plus, Qt::KeypadModifier);
    QTest::keyClick(Window(), Qt::Key_Underscore, Qt::ShiftModifier);
    QTest::keyClick(Window(), Qt::Key_yen);
    EXPECT_EQ(Fired(), "Ctrl + Shift + A|Shift + 1|Num 5|Alt + F4|Shift + BackSlash|\\");

    // A plain key fires inside the text box too, and the text box still gets it.
    fired_.clear();
    edit_.clear();
    QTest::keyClick(Window(), Qt::Key_B);
    EXPECT_EQ(Fired(), "B");
    EXPECT_EQ(edit_.text(), "b");
}

TEST_F(AcceleratorTest, ABindingWinsOverTheWindowsOwnShortcut)
{
    QAction menu("ファイル(&F)");
    menu.setShortcut(QKeySequence(Qt::ALT | Qt::Key_F));
    main_.addAction(&menu);
    const QSignalSpy triggers(&menu, &QAction::triggered);
    QTest::keyClick(Window(), Qt::Key_F, Qt::AltModifier);
    ASSERT_EQ(triggers.count(), 1);  // the shortcut is live

    keys_.SetAcceleratorKey(*KeyboardSettings({"Alt + F"}));
    QTest::keyClick(Window(), Qt::Key_F, Qt::AltModifier);
    EXPECT_EQ(triggers.count(), 1);
    EXPECT_EQ(Fired(), "Alt + F");
}

TEST_F(AcceleratorTest, EveryAutoRepeatFiresAgain)
{
    keys_.SetAcceleratorKey(*KeyboardSettings({"Ctrl + Right"}));
    QTest::simulateEvent(Window(), true, Qt::Key_Right, Qt::ControlModifier, {}, false);
    QTest::simulateEvent(Window(), true, Qt::Key_Right, Qt::ControlModifier, {}, true);
    QTest::simulateEvent(Window(), true, Qt::Key_Right, Qt::ControlModifier, {}, true);
    QTest::simulateEvent(Window(), false, Qt::Key_Right, Qt::ControlModifier, {}, false);
    EXPECT_EQ(fired_.size(), 3);
}

TEST_F(AcceleratorTest, RegistrationsAreRebuiltAndLiftedWhole)
{
    const SDC settings = KeyboardSettings({"F5", "Ctrl + F5"});
    keys_.SetAcceleratorKey(*settings);
    keys_.SetAcceleratorKey(*settings);
    EXPECT_EQ(keys_.ctlAccelerator1().Count(), 2);
    keys_.RemoveAcceleratorKey();
    EXPECT_FALSE(keys_.ctlAccelerator1().Watching());
    QTest::keyClick(Window(), Qt::Key_F5);
    EXPECT_TRUE(fired_.isEmpty());

    keys_.SetAcceleratorKey(*settings);
    keys_.SetAcceleratorKey(StructuredDataClass());
    EXPECT_EQ(keys_.ctlAccelerator1().Count(), 0);
    EXPECT_FALSE(keys_.ctlAccelerator1().Watching());

    // Only a hand-edited file has the group without its list.
    StructuredDataClass broken;
    broken.CreateThread(AppCommandListClass::KeyboardGroup);
    EXPECT_THROW(keys_.SetAcceleratorKey(broken), AppError);
}

TEST(ctlAcceleratorTest, RecordsAreRefusedQuietlyAndRenumberedOnRemoval)
{
    QWidget owner;
    ctlAccelerator accel(&owner);
    QStringList hits;
    accel.SetHandler([&](const QString& vKey, qint32, qint16, bool&) { hits.append(vKey); });

    accel.Add("one", 2, 65);
    accel.Add("one", 0, 66);   // key taken
    accel.Add("zero", 0, 0);   // no key code
    accel.Add("same", 2, 65);  // combination taken
    accel.Add("two", 1, 66);
    accel.Add("three", 4, 67);
    ASSERT_EQ(accel.Count(), 3);
    EXPECT_EQ(accel.Shift("three"), 4);

    accel.Remove("one");
    EXPECT_EQ(accel.RecordNumber(4, 67), 2);
    accel.KeyDown(4, 67);
    accel.KeyDown(2, 65);
    EXPECT_EQ(hits, QStringList({"three"}));

    accel.Remove("two");
    EXPECT_TRUE(accel.Watching());
    accel.Remove("three");
    EXPECT_FALSE(accel.Watching());
}

TEST_F(AcceleratorTest, CancelKeepsTheKeyAndAHitInsideAHitIsDropped)
{
    ctlAccelerator& accel = keys_.ctlAccelerator1();
    int hits = 0;
    accel.SetHandler([&](const QString&, qint32, qint16, bool& vCancel) {
        ++hits;
        vCancel = true;
        QTest::keyClick(Window(), Qt::Key_C);  // as if the action pumped a pending key
    });
    accel.Add("C", 0, 67);
    QTest::keyClick(Window(), Qt::Key_C);
    EXPECT_EQ(hits, 1);
    EXPECT_EQ(edit_.text(), "c");  // the inner press only, which nobody cancelled
}

}  // namespace
