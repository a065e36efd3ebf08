#include "app/DocWrite.h"

#include "document/DocuWorksClass.h"
#include "document/DocuWorksFileClass.h"
#include "engine/FormatError.h"
#include "engine/write/Attributes.h"
#include "engine/write/Navigate.h"
#include "engine/write/Saver.h"
#include "support/AppError.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace docwrite {

namespace {

[[noreturn]] void Fail(const QString& vText)
{
    throw AppError(AppError::Document, vText);
}

} // namespace

void Create(const QStringList& vPaths, const Options& vOptions)
{
    const QString output = vPaths.first();
    DocuWorksClass maker;
    maker.SetCompress(vOptions.compress);
    maker.SetFitImage(vOptions.fit);
    maker.CreateXdwFromImageFile(vPaths.at(1), output);
    if (vPaths.size() == 2)
        return;
    // Each later image becomes a document of its own first, whose pages then go to the end.
    QTemporaryDir work;
    if (!work.isValid())
        Fail(u"create : no folder for temporary documents"_s);
    DocuWorksClass docuWorks;
    const auto file = docuWorks.OpenXdw(output, 1);
    for (qsizetype i = 2; i < vPaths.size(); ++i) {
        const QString part = work.filePath(u"part%1.xdw"_s.arg(i));
        maker.CreateXdwFromImageFile(vPaths[i], part);
        file->GetDocumentInformation();
        file->InsertDocument(file->Pages() + 1, part);
    }
    file->SaveDocument();
}

void Merge(const QStringList& vPaths)
{
    DocuWorksClass docuWorks;
    SDC inputs = docuWorks.RefMergeFileList();
    for (qsizetype i = 1; i < vPaths.size(); ++i)
        inputs->AddData(vPaths[i]);
    docuWorks.MergeXdwDocument(vPaths.first());
}

void Ocr(const QString& vPath, const Options& vOptions, QTextStream& vOut)
{
    DocuWorksClass docuWorks;
    const auto file = docuWorks.OpenXdw(vPath, 1);
    file->Ocr().language = vOptions.language;
    file->GetDocumentInformation();
    for (qint32 page = 1; page <= file->Pages(); ++page)
        file->ApplyOcrV7(page);
    file->SaveDocument();
    for (qint32 page = 1; page <= file->Pages(); ++page)
        vOut << "page " << page << ":\n" << file->GetPageTextToMemory(page) << '\n';
}

void Attributes(XdwEngine&, const QStringList& vArguments, QTextStream& vOut)
{
    const QString path = vArguments.first();
    DocuWorksClass docuWorks;
    const auto file = docuWorks.OpenXdw(path, 1);
    if (vArguments.size() == 1) {
        QStringList names;
        try {
            names = xdw::AttributeNames(xdw::LoadEditable(path));
        } catch (const xdw::FormatError& e) {
            Fail(u"attr : "_s + e.reason);
        }
        for (const QString& name : names)
            if (!name.startsWith(u'%') && name != xdw::edit::LastId)
                vOut << name << '\n';
        return;
    }
    const QString name = vArguments.at(1);
    if (vArguments.size() == 2) {
        QString value = file->GetDocumentAttribute(name);
        if (value.isEmpty())
            value = file->GetUserAttribute(name);
        vOut << value << '\n';
        return;
    }
    if (vArguments.size() != 4)
        Fail(u"attr : give FILE NAME VALUE TYPE (TYPE one of Integer, String, Date, Bool)"_s);
    file->SetDocumentAttribute(name, vArguments.at(2), vArguments.at(3));
    file->SaveDocument();
}

} // namespace docwrite
