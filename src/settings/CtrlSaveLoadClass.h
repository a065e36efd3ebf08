#pragma once
// Copies the state of a form into a tree of the store and back, keyed by the names of its
// controls, so that a form's settings need no code of their own. A group in the tree holds one
// form (or one page); its thread "Form" holds the form's place and size in twips, the unit the
// settings file shares with the Windows build.
//
// The Qt widgets stand in for the Windows controls, each under the type word the Windows build
// writes: QLineEdit "TextBox", QComboBox "ComboBox", QListWidget "ListBox", QCheckBox "CheckBox",
// QRadioButton "OptionButton", QGroupBox "Frame", QTabBar "TabStrip", QTreeWidget "ListView" and
// ColorSwatch "PictureBox". A control array is several widgets of one objectName, each with an
// int property "Index"; a list box whose property "Style" is 1 is a check list, and a list view
// whose property "Checkboxes" is true shows the stored ticks.

#include "store/StructuredDataClass.h"

#include <QPointer>
#include <QString>
#include <QWidget>

class CtrlSaveLoadClass {
public:
    static inline const QString DefaultGroup = QStringLiteral("DefaultGroup");

    void SetForm(QWidget* vForm) { form_ = vForm; }
    SDC Data();
    void SetData(SDC vData) { data_ = std::move(vData); }
    QString ListOption() const { return listOption_; }
    void SetListOption(const QString& v) { listOption_ = v; }

    void Grouping(const QString& vGroupName, const QString& vControlName);
    void SaveValue(const QString& vGroupName);
    void LoadValue(const QString& vGroupName);

    // The type word of a widget, "" for one that isn't bound.
    static QString TypeOf(const QWidget* vControl);
    // The "Index" of a control array member, -1 for a plain control.
    static int ControlIndex(const QWidget* vControl);

    // Twips per pixel on the form's screen: 1440 over its logical dots per inch.
    static double TwipsPerPixel(const QWidget* vForm);

private:
    void SaveGeometry(const SDC& vGroup);
    void LoadGeometry(const SDC& vGroup);
    void SaveControl(QWidget* vControl, const QString& vType, const SDC& vThread) const;
    void LoadControl(QWidget* vControl, const SDC& vThread) const;
    bool TextOnly() const { return listOption_.toUpper() == QLatin1String("TEXT"); }

    QPointer<QWidget> form_;
    SDC data_;
    QString listOption_;
};
