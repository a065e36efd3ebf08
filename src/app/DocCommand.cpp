#include "app/DocCommand.h"

#include "app/DocWrite.h"

#include "document/DocuWorksClass.h"
#include "document/DocuWorksFileClass.h"
#include "document/XdwApi.h"
#include "engine/XdwEngine.h"
#include "support/AppError.h"

#include <QFileInfo>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Usage = u"usage: marnoquill-doc info FILE | render FILE PAGE --dpi N [--mono] -o OUT"
                      u" | text FILE [PAGE] | pdf FILE -o OUT.pdf"
                      u" | create OUT.xdw IMAGE... [--compress NAME] [--fit NAME] | merge OUT.xdw IN.xdw..."
                      u" | ocr FILE [--lang JAPANESE|ENGLISH|AUTO] | attr FILE [NAME [VALUE TYPE]]"_s;

struct UsageError {
    QString text;
};

// The arguments after the command: plain ones in order, and the options by name.
struct Arguments {
    QStringList plain;
    QString output;
    int dpi = 150;
    bool mono = false;
    docwrite::Options writing;
};

Arguments Parse(QStringList vRest)
{
    Arguments a;
    while (!vRest.isEmpty()) {
        const QString arg = vRest.takeFirst();
        if (arg == u"--mono"_s) {
            a.mono = true;
        } else if ((arg == u"--compress"_s || arg == u"--fit"_s || arg == u"--lang"_s) && !vRest.isEmpty()) {
            QString& option = arg == u"--compress"_s ? a.writing.compress
                : arg == u"--fit"_s                  ? a.writing.fit
                                                     : a.writing.language;
            option = vRest.takeFirst().toUpper();
        } else if ((arg == u"-o"_s || arg == u"--dpi"_s) && !vRest.isEmpty()) {
            const QString value = vRest.takeFirst();
            bool ok = true;
            if (arg == u"-o"_s)
                a.output = value;
            else
                a.dpi = value.toInt(&ok);
            if (!ok)
                throw UsageError{u"--dpi wants a number: "_s + value};
        } else if (arg.startsWith(u'-') && arg.size() > 1) {
            throw UsageError{u"unknown option "_s + arg};
        } else {
            a.plain.append(arg);
        }
    }
    return a;
}

int PageNumber(const QString& vText, int vPages)
{
    bool ok = false;
    const int page = vText.toInt(&ok);
    if (!ok || page < 1 || page > vPages)
        throw UsageError{u"no page "_s + vText + u" (the document has "_s + QString::number(vPages) + u")"_s};
    return page;
}

QString TypeOf(qint16 vPageType)
{
    switch (vPageType) {
    case 1: return u"image"_s;
    case 2: return u"application"_s;
    default: return u"blank"_s;
    }
}

QByteArray FormatOf(const QString& vPath)
{
    const QString ending = QFileInfo(vPath).suffix().toLower();
    if (ending == u"png"_s)
        return "PNG";
    if (ending == u"tif"_s || ending == u"tiff"_s)
        return "TIFF";
    if (ending == u"jpg"_s || ending == u"jpeg"_s)
        return "JPEG";
    throw UsageError{u"the output must end in .png, .tif, .tiff, .jpg or .jpeg: "_s + vPath};
}

// The engine's own failure raised as the document classes raise theirs, with the engine's line
// about the file taken now: closing the document on the way out clears it.
void Check(XdwEngine& vEngine, const QString& vOperation)
{
    if (vEngine.LastResult() == XdwResult::Success)
        return;
    QString text = vOperation + u" : "_s + vEngine.LastErrorText();
    if (!vEngine.LastReason().isEmpty())
        text += u" ("_s + vEngine.LastReason() + u')';
    throw AppError(AppError::Document, text);
}

void Info(DocuWorksFileClass& vFile, QTextStream& vOut)
{
    vOut << "pages: " << vFile.Pages() << '\n';
    for (int page = 1; page <= vFile.Pages(); ++page) {
        vFile.GetPageInformationEx(page);
        vOut << "page " << page << ": " << QString::number(vFile.PageWidth() / 100.0, 'f', 2) << " x "
             << QString::number(vFile.PageHeight() / 100.0, 'f', 2) << " mm, " << vFile.PageHorRes()
             << " x " << vFile.PageVerRes() << " dpi, " << TypeOf(vFile.PageType()) << ", rotation "
             << vFile.PageDegree() << ", annotations " << vFile.PageAnnotations() << '\n';
    }
}

void Text(XdwEngine& vEngine, DocuWorksFileClass& vFile, const Arguments& vArgs, QTextStream& vOut)
{
    const int first = vArgs.plain.size() > 1 ? PageNumber(vArgs.plain[1], vFile.Pages()) : 1;
    const int last = vArgs.plain.size() > 1 ? first : vFile.Pages();
    for (int page = first; page <= last; ++page) {
        vEngine.SelectDocumentHandle(vFile.DocumentHandle());
        const QString text = vEngine.GetPageTextToMemory(page);
        if (vEngine.LastResult() != XdwResult::InvalidOperation)  // that one: a page without text
            Check(vEngine, u"GetPageTextToMemory"_s);
        vOut << text << '\n';
    }
}

void Render(XdwEngine& vEngine, DocuWorksFileClass& vFile, const Arguments& vArgs)
{
    if (vArgs.plain.size() < 2 || vArgs.output.isEmpty())
        throw UsageError{Usage};
    const int page = PageNumber(vArgs.plain[1], vFile.Pages());
    const QByteArray format = FormatOf(vArgs.output);
    if (vArgs.dpi < 10 || vArgs.dpi > 600)
        throw UsageError{u"--dpi must be 10 to 600"_s};
    vEngine.SelectDocumentHandle(vFile.DocumentHandle());
    vEngine.ConvertPageToImageFile(page, vArgs.output, vArgs.dpi, vArgs.mono ? 0 : 1, QString::fromLatin1(format));
    Check(vEngine, u"ConvertPageToImageFile"_s);
}

void Pdf(XdwEngine& vEngine, DocuWorksFileClass& vFile, const Arguments& vArgs, QTextStream& vErr, bool vProgress)
{
    if (vArgs.output.isEmpty())
        throw UsageError{Usage};
    QPdfWriter writer(vArgs.output);
    writer.setCreator(u"marnoquill-doc"_s);
    writer.setPageMargins(QMarginsF());
    QPainter painter;
    const double scale = writer.resolution() / 2540.0;
    for (int page = 1; page <= vFile.Pages(); ++page) {
        vFile.GetPageInformationNormal(page);
        const QPageSize size(QSizeF(vFile.PageWidth() / 100.0, vFile.PageHeight() / 100.0),
                             QPageSize::Millimeter, QString(), QPageSize::ExactMatch);
        writer.setPageSize(size);
        if (page == 1 ? !painter.begin(&writer) : !writer.newPage())
            throw AppError(AppError::Document, u"pdf : "_s + vArgs.output + u" cannot be written"_s);
        vEngine.SelectDocumentHandle(vFile.DocumentHandle());
        vEngine.PaintPage(painter, page, scale);
        Check(vEngine, u"pdf"_s);
        if (vProgress)
            vErr << "\rpage " << page << " of " << vFile.Pages() << Qt::flush;
    }
    if (vProgress)
        vErr << '\n';
    if (!painter.end())
        throw AppError(AppError::Document, u"pdf : "_s + vArgs.output + u" cannot be written"_s);
}

} // namespace

int RunDocCommand(const QStringList& vArguments, QTextStream& vOut, QTextStream& vErr, bool vProgress)
{
    const auto engine = std::make_shared<XdwEngine>();
    SetXdwApiObject(engine);
    try {
        if (vArguments.size() < 2)
            throw UsageError{Usage};
        const QString command = vArguments[0];
        const Arguments args = Parse(vArguments.mid(1));
        if (args.plain.isEmpty())
            throw UsageError{Usage};
        if (command == u"create"_s || command == u"merge"_s) {
            if (args.plain.size() < 2)
                throw UsageError{Usage};
            if (command == u"create"_s)
                docwrite::Create(args.plain, args.writing);
            else
                docwrite::Merge(args.plain);
            return 0;
        }
        if (command == u"ocr"_s) {
            docwrite::Ocr(args.plain[0], args.writing, vOut);
            vOut.flush();
            return 0;
        }
        if (command == u"attr"_s) {
            docwrite::Attributes(*engine, args.plain, vOut);
            vOut.flush();
            return 0;
        }
        if (command != u"info"_s && command != u"render"_s && command != u"text"_s && command != u"pdf"_s)
            throw UsageError{u"unknown command "_s + command};
        DocuWorksClass docuWorks;
        const auto file = docuWorks.OpenXdw(args.plain[0], 1);
        file->GetDocumentInformation();
        if (command == u"info"_s)
            Info(*file, vOut);
        else if (command == u"text"_s)
            Text(*engine, *file, args, vOut);
        else if (command == u"render"_s)
            Render(*engine, *file, args);
        else
            Pdf(*engine, *file, args, vErr, vProgress);
    } catch (const UsageError& e) {
        vErr << "marnoquill-doc: " << e.text << '\n';
        return 1;
    } catch (const AppError& e) {
        // The runtime's text is what users of the Windows build know; the engine's own line
        // says what in the file did not fit, when a failed open left it there.
        QString text = e.Description();
        const QString reason = engine->LastResult() != XdwResult::Success ? engine->LastReason() : QString();
        if (!reason.isEmpty() && !text.contains(reason))
            text += u" ("_s + reason + u')';
        vErr << "marnoquill-doc: error " << e.Number() << ": " << text << '\n';
        return 1;
    }
    vOut.flush();
    return 0;
}
