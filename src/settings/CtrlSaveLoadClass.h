#pragma once
// Copies the state of a form into a tree of the store and back, keyed by the names of its
// controls, so that a form's settings need no code of their own. A group in the tree holds one
// form (or one page); its thread "Form" holds the form's place and size in twips, the unit the
// settings file shares with the Windows build.

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

    // Twips per pixel on the form's screen: 1440 over its logical dots per inch.
    static double TwipsPerPixel(const QWidget* vForm);

private:
    QPointer<QWidget> form_;
    SDC data_;
    QString listOption_;
};
