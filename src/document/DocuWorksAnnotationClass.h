#pragma once
// One annotation on a page of an opened document: made, read, removed, and its runtime
// attributes read and written as properties by name. Documents make these through their
// Add...Annotation and GetAnnotation operations; the viewer itself never does.
//
// Positions and sizes are in hundredths of a millimetre. Colours are numbers with red in the
// low byte; the colour tree names them as the annotation dialogs of DocuWorks do.

#include "store/StructuredDataClass.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <memory>

class DocumentEngine;

class DocuWorksAnnotationClass {
public:
    // What AddAnnotation makes, by number.
    enum AddType : qint32 { Text = 1, Rect = 2, Link = 3, Bitmap = 4, Line = 5, DateStamp = 6, Fusen = 7 };

    explicit DocuWorksAnnotationClass(std::shared_ptr<DocumentEngine> vEngine = {});
    DocuWorksAnnotationClass(const DocuWorksAnnotationClass&) = delete;
    DocuWorksAnnotationClass& operator=(const DocuWorksAnnotationClass&) = delete;

    // Threads "色" (name to number), "基本色" (the sixteen from black to white), "背景色なし",
    // "色文字列" and "背景色文字列" (number to name).
    SDC ColorName() const { return colorName_; }

    qint32 Index() const { return index_; }
    qint32 DocumentHandle() const { return documentHandle_; }
    void SetDocumentHandle(qint32 vHandle) { documentHandle_ = vHandle; }
    qint32 AnnotationHandle() const { return annotationHandle_; }
    void SetAnnotationHandle(qint32 vHandle) { annotationHandle_ = vHandle; }
    qint32 Page() const { return page_; }
    qint32 XPosition() const { return xPosition_; }
    qint32 YPosition() const { return yPosition_; }
    // The size a rectangle or a sticky note is made with; the run of a line in HorVec, VerVec.
    qint32 Width() const { return width_; }
    void SetWidth(qint32 vWidth) { width_ = vWidth; }
    qint32 Height() const { return height_; }
    void SetHeight(qint32 vHeight) { height_ = vHeight; }
    qint32 HorVec() const { return horVec_; }
    void SetHorVec(qint32 vHorVec) { horVec_ = vHorVec; }
    qint32 VerVec() const { return verVec_; }
    void SetVerVec(qint32 vVerVec) { verVec_ = vVerVec; }
    QString BitmapPath() const { return bitmapPath_; }
    void SetBitmapPath(const QString& vPath) { bitmapPath_ = vPath; }
    qint32 ChildAnnotations() const { return childAnnotations_; }
    // "FUSEN", "TEXT", ... of the last GetAnnotation; a type it doesn't know leaves it alone.
    QString AnnotationType() const { return annotationType_; }

    // ---- properties: the runtime's attribute of the same name. Reading asks the runtime and
    // keeps the answer; writing keeps the value and hands it on. Neither looks at the result.
    // A name outside PropertyNames raises 5.
    QString Property(const QString& vName);
    void SetProperty(const QString& vName, const QString& vValue);
    // The value last read or written, without asking.
    QString CachedProperty(const QString& vName) const { return properties_.value(vName); }
    static const QStringList& PropertyNames();
    // The data type number a property is written with: 2 for text, 0 for numbers.
    static qint32 PropertyDataType(const QString& vName);

    // ---- operations; failures raise 6300
    void AddAnnotation(qint32 vType, qint32 vPage, qint32 vLeft, qint32 vTop, qint32 vParentHandle);
    void AddAnnotationFile(const QString& vAnnFilePath, qint32 vPage, qint32 vLeft, qint32 vTop,
                           bool vTargetGroupAnnotation, bool vTargetCustomAnnotation, qint32 vParentHandle);
    void GetAnnotation(qint32 vPage, qint32 vIndex, qint32 vParentHandle);
    void RemoveAnnotation();

    // ---- names
    static QString TypeOfCode(qint32 vTypeCode);      // the runtime's code to "FUSEN" ...; "" unknown
    static QString Japanese(const QString& vType);    // "FUSEN" to "付箋"; "" unknown
    QString GetColorName(qint32 vColor) const;        // "" for a number without a name
    QString GetBackColorName(qint32 vColor) const;
    qint32 GetColorByName(const QString& vName) const;  // raises 13 for a name it doesn't know

private:
    // The selections every property call makes first.
    DocumentEngine& SelectAnnotation();
    static void CheckPosition(const QString& vPrefix, qint32 vLeft, qint32 vTop);
    void CheckShape(qint32 vType) const;
    static SDC MakeColorTree();

    std::shared_ptr<DocumentEngine> engine_;
    SDC colorName_;
    qint32 index_ = 0;
    qint32 documentHandle_ = 0;
    qint32 annotationHandle_ = 0;
    qint32 page_ = 0;
    qint32 xPosition_ = 0, yPosition_ = 0, width_ = 0, height_ = 0, horVec_ = 0, verVec_ = 0;
    QString bitmapPath_;
    QHash<QString, QString> properties_;
    qint32 childAnnotations_ = 0;
    QString annotationType_;
};
