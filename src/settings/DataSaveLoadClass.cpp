#include "settings/DataSaveLoadClass.h"

#include "support/AppError.h"
#include "support/Cp932.h"
#include "support/FileBytes.h"

#include <vector>

namespace {

const QString kHeadStart = QStringLiteral("[!LABEL_");
const QString kThread = QStringLiteral("[!Thread]");
const QString kComment = QStringLiteral("[!#]");
const QByteArray kCrLf = QByteArrayLiteral("\r\n");

QString HeadText(const QString& vLabel) { return kHeadStart + vLabel + QLatin1Char(']'); }

// A head is any line that starts with "[!LABEL_" and holds a "]" later; what follows it doesn't
// matter. Reading a section stops at the next one.
bool IsHead(QStringView vLine)
{
    return vLine.startsWith(kHeadStart) && vLine.indexOf(QLatin1Char(']'), kHeadStart.size()) >= 0;
}

// Checked by bytes first: only lines that start with the ASCII head text are decoded.
bool IsHead(QByteArrayView vLine)
{
    return vLine.startsWith("[!LABEL_") && IsHead(QStringView(Cp932::Decode(vLine)));
}

QString FirstField(QStringView vLine)
{
    const qsizetype tab = vLine.indexOf(QLatin1Char('\t'));
    return (tab < 0 ? vLine : vLine.left(tab)).toString();
}

// The fields of one settings line from the first one that isn't empty: its number is the level.
struct LineFields {
    int level = -1;
    QStringView fields[3];
    int count = 0;
};

LineFields SplitLine(QStringView vLine)
{
    LineFields f;
    qsizetype pos = 0;
    while (pos < vLine.size() && vLine[pos] == QLatin1Char('\t'))
        ++pos;
    if (pos == vLine.size())
        return f;  // TABs alone: no field to stand on
    f.level = static_cast<int>(pos);
    while (f.count < 3) {
        const qsizetype tab = vLine.indexOf(QLatin1Char('\t'), pos);
        f.fields[f.count++] = tab < 0 ? vLine.sliced(pos) : vLine.sliced(pos, tab - pos);
        if (tab < 0)
            break;
        pos = tab + 1;
    }
    return f;
}

QStringView FieldOrRaise(const LineFields& vFields, int vIndex)
{
    if (vIndex >= vFields.count)
        throw AppError(AppError::SubscriptOutOfRange);
    return vFields.fields[vIndex];
}

} // namespace

DataSaveLoadClass::DataSaveLoadClass() : labelTable_(std::make_shared<StructuredDataClass>()) {}

DataSaveLoadClass::~DataSaveLoadClass() { labelTable_->Clear(); }

namespace {

void AppendEscaped(QString& vOut, QStringView vText)
{
    qsizetype plain = 0;
    for (qsizetype i = 0; i < vText.size(); ++i) {
        const QChar c = vText[i];
        if (c != QLatin1Char('\t') && c != QLatin1Char('\r') && c != QLatin1Char('\n'))
            continue;
        vOut.append(vText.sliced(plain, i - plain));
        if (c == QLatin1Char('\t')) {
            vOut.append(QLatin1String("[!Tab]"));
        } else if (c == QLatin1Char('\n')) {
            vOut.append(QLatin1String("[!Lf]"));
        } else if (i + 1 < vText.size() && vText[i + 1] == QLatin1Char('\n')) {
            vOut.append(QLatin1String("[!CrLf]"));
            ++i;
        } else {
            vOut.append(QLatin1String("[!Cr]"));
        }
        plain = i + 1;
    }
    vOut.append(vText.sliced(plain));
}

} // namespace

// One pass does what four replacements in a row do: a replacement yields a control character,
// which can never be part of another escape, so no order of finding them can differ.
QString DataSaveLoadClass::Escape(QStringView vText)
{
    QString out;
    AppendEscaped(out, vText);
    return out;
}

// "[" has no escape of its own, so a value that held the literal text "[!Tab]" comes back with a
// TAB: that is the format, and the Windows build agrees.
QString DataSaveLoadClass::Unescape(QStringView vText)
{
    // Most keys and values hold no "[" at all; a search for one character is the quick test.
    if (vText.indexOf(QLatin1Char('[')) < 0)
        return vText.toString();
    qsizetype at = vText.indexOf(QLatin1String("[!"));
    if (at < 0)
        return vText.toString();
    static const struct {
        QLatin1String escape;
        QLatin1String text;
    } kEscapes[] = {{QLatin1String("[!Tab]"), QLatin1String("\t")},
                    {QLatin1String("[!CrLf]"), QLatin1String("\r\n")},
                    {QLatin1String("[!Cr]"), QLatin1String("\r")},
                    {QLatin1String("[!Lf]"), QLatin1String("\n")}};
    QString out;
    out.reserve(vText.size());
    qsizetype plain = 0;
    while (at >= 0) {
        qsizetype next = at + 2;
        for (const auto& e : kEscapes) {
            if (vText.sliced(at).startsWith(e.escape)) {
                out.append(vText.sliced(plain, at - plain));
                out.append(e.text);
                plain = next = at + e.escape.size();
                break;
            }
        }
        at = vText.indexOf(QLatin1String("[!"), next);
    }
    out.append(vText.sliced(plain));
    return out;
}

void DataSaveLoadClass::Visit(StructuredDataClass& vSDC)
{
    const int depth = vSDC.LevelNo() - 1;
    if (depth < 0)
        throw AppError(AppError::InvalidArgument);
    for (qint16 i = 1; i <= vSDC.Count(); ++i) {
        const QString type = vSDC.DataTypeOfNumber(i);
        if (type == StructuredDataClass::TypeRef)
            continue;
        for (int t = 0; t < depth; ++t)
            outLines_.append(QLatin1Char('\t'));
        const bool thread = type == StructuredDataClass::TypeThread;
        if (thread)
            outLines_.append(QLatin1String("[!Thread]\t"));
        AppendEscaped(outLines_, vSDC.DataKeyOfNumber(i));
        outLines_.append(QLatin1Char('\t'));
        const SDC child = thread ? vSDC.ThreadOfNumber(i) : nullptr;
        AppendEscaped(outLines_, thread ? (child ? child->Name() : QString()) : vSDC.DataValueOfNumber(i));
        outLines_.append(QLatin1String("\r\n"));
        ++outCount_;
        if (child)
            child->Accept(*this);
    }
}

void DataSaveLoadClass::BuildOutLines()
{
    outLines_.clear();
    outCount_ = 0;
    data_->Accept(*this);
}

QString DataSaveLoadClass::GetSaveString(const QString& vLabel)
{
    if (!data_)
        return {};
    BuildOutLines();
    return HeadText(vLabel) + QStringLiteral("\r\n") + outLines_;
}

void DataSaveLoadClass::Save(const QString& vFileName, const QString& vLabel)
{
    if (!data_)
        return;
    if (!vFileName.isEmpty())
        fileName_ = vFileName;

    // The old file's lines pass through as bytes, untouched, whatever section they belong to.
    QByteArray old;
    std::vector<QByteArrayView> oldLines;
    labelTable_->Clear();
    if (FileBytes::Exists(fileName_)) {
        old = FileBytes::ReadAll(fileName_);
        FileBytes::ForEachLine<QByteArrayView>(old, [&](QByteArrayView line) {
            oldLines.push_back(line);
            if (IsHead(line))
                labelTable_->AddData(QString::number(oldLines.size()), FirstField(Cp932::Decode(line)));
        });
    }

    BuildOutLines();
    const QString head = HeadText(vLabel);

    // Lines before the old section, the new section, then everything from the next head on.
    qsizetype before = static_cast<qsizetype>(oldLines.size());
    qsizetype resume = before;
    if (labelTable_->Exists(head)) {
        const qint16 at = labelTable_->GetNumberOfKey(labelTable_->DataKey(head));
        before = labelTable_->DataValue(head).toLongLong() - 1;
        if (at < labelTable_->Count())
            resume = labelTable_->DataValueOfNumber(static_cast<qint16>(at + 1)).toLongLong() - 1;
    }
    QByteArray out;
    out.reserve(old.size() + outLines_.size() * 2);
    for (qsizetype i = 0; i < before; ++i)
        out.append(oldLines[i]).append(kCrLf);
    out.append(Cp932::Encode(QString(head + QLatin1Char('\t') + QString::number(outCount_)
                                     + QStringLiteral("\r\n") + outLines_)));
    for (qsizetype i = resume; i < static_cast<qsizetype>(oldLines.size()); ++i)
        out.append(oldLines[i]).append(kCrLf);
    FileBytes::WriteReplacing(fileName_, out);
}

void DataSaveLoadClass::Load(const QString& vFileName, const QString& vLabel)
{
    if (!data_)
        return;
    if (!vFileName.isEmpty())
        fileName_ = vFileName;
    if (!FileBytes::Exists(fileName_))
        return;
    const QString text = Cp932::Decode(FileBytes::ReadAll(fileName_));
    std::vector<QStringView> lines;
    FileBytes::ForEachLine<QStringView>(text, [&](QStringView line) { lines.push_back(line); });
    ReadSection(lines, vLabel);
}

void DataSaveLoadClass::LoadString(const QString& vString, const QString& vLabel)
{
    if (!data_ || vString.isEmpty())
        return;
    std::vector<QStringView> lines;
    for (QStringView line : QStringView(vString).split(QStringLiteral("\r\n")))
        lines.push_back(line);
    ReadSection(lines, vLabel);
}

void DataSaveLoadClass::ReadSection(const std::vector<QStringView>& vLines, const QString& vLabel)
{
    const QString head = HeadText(vLabel);
    fileLines_.clear();
    bool inside = false;
    for (QStringView line : vLines) {
        if (IsHead(line)) {
            if (line.startsWith(head))
                inside = true;
            else if (inside)
                break;
        } else if (inside) {
            fileLines_.push_back(line);
        }
    }
    // The views point into the caller's text, which outlives the parse but not this call.
    struct Forget {
        std::vector<QStringView>& lines;
        ~Forget() { lines.clear(); }
    } forget{fileLines_};
    ParseLines();
}

// The tree isn't cleared: a load merges, and keys already present are overwritten in place.
void DataSaveLoadClass::ParseLines()
{
    std::vector<SDC> stack;
    for (QStringView line : fileLines_) {
        if (line.isEmpty())
            continue;
        const LineFields f = SplitLine(line);
        if (f.level < 0)
            throw AppError(AppError::SubscriptOutOfRange);
        if (f.fields[0].startsWith(kComment))
            continue;
        while (!stack.empty() && static_cast<int>(stack.size()) - 1 >= f.level)
            stack.pop_back();
        if (f.level > 0 && stack.empty())
            throw AppError(AppError::InvalidArgument);
        StructuredDataClass& node = f.level == 0 ? *data_ : *stack.back();
        if (f.fields[0] == kThread) {
            const QString key = Unescape(FieldOrRaise(f, 1));
            const QString name = Unescape(FieldOrRaise(f, 2));
            SDC child = node.CreateThread(key);
            child->SetName(name);
            stack.push_back(std::move(child));
        } else {
            const QString value = Unescape(FieldOrRaise(f, 1));
            node.AddData(value, Unescape(f.fields[0]));
        }
    }
}
