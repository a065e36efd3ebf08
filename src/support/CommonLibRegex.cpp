// Regular expressions in the Perl form the program has always written them in: "/pattern/options"
// for a match and "s/pattern/replacement/options" for a replacement. QString holds UTF-16, so a
// double-byte character is one character to the pattern, as it was to the Shift-JIS engines.
#include "support/CommonLibClass.h"

#include <QRegularExpression>
#include <optional>

namespace {

struct RegexForm {
    QString pattern;
    QString replacement;
    QString options;
};

bool IsDelimiter(QChar c)
{
    return !c.isLetterOrNumber() && !c.isSpace() && c != u'\\';
}

// Index of the next vDelimiter at or after vFrom that no backslash escapes, or -1.
qsizetype NextDelimiter(const QString& vText, QChar vDelimiter, qsizetype vFrom)
{
    for (qsizetype i = vFrom; i < vText.size(); ++i) {
        if (vText[i] == u'\\')
            ++i;
        else if (vText[i] == vDelimiter)
            return i;
    }
    return -1;
}

// Takes the form apart. The options are what follows the last delimiter, so a "/" that a caller
// forgot to escape in a match pattern still ends up in the pattern. In a substitution the pattern
// ends at its first unescaped delimiter, as in Perl.
std::optional<RegexForm> ParseForm(const QString& vForm, bool vSubstitution)
{
    const qsizetype start = vSubstitution && vForm.startsWith(u's') ? 1 : 0;
    if (start >= vForm.size() || !IsDelimiter(vForm[start]))
        return std::nullopt;
    const QChar delimiter = vForm[start];
    const qsizetype last = vForm.lastIndexOf(delimiter);
    if (last <= start)
        return std::nullopt;

    RegexForm form;
    form.options = vForm.mid(last + 1);
    if (!vSubstitution) {
        form.pattern = vForm.mid(start + 1, last - start - 1);
        return form;
    }
    const qsizetype middle = NextDelimiter(vForm, delimiter, start + 1);
    if (middle < 0 || middle >= last)
        return std::nullopt;
    form.pattern = vForm.mid(start + 1, middle - start - 1);
    form.replacement = vForm.mid(middle + 1, last - middle - 1);
    return form;
}

QRegularExpression Compile(const RegexForm& vForm)
{
    QRegularExpression::PatternOptions options;
    if (vForm.options.contains(u'i'))
        options |= QRegularExpression::CaseInsensitiveOption;
    if (vForm.options.contains(u'm'))
        options |= QRegularExpression::MultilineOption;
    if (vForm.options.contains(u's'))
        options |= QRegularExpression::DotMatchesEverythingOption;
    if (vForm.options.contains(u'x'))
        options |= QRegularExpression::ExtendedPatternSyntaxOption;
    return QRegularExpression(vForm.pattern, options);
}

bool IsAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// Reads the digits at vAt onward into a group number; vAt ends behind them.
int ReadGroupNumber(const QString& vText, qsizetype& vAt)
{
    int number = 0;
    while (vAt < vText.size() && IsAsciiDigit(vText[vAt]) && number < 10000)
        number = number * 10 + (vText[vAt++].unicode() - u'0');
    return number;
}

// "\n", "\r" and "\t" are line ends and TAB; a backslash before anything else only quotes it.
QChar EscapedCharacter(QChar vAfterBackslash)
{
    switch (vAfterBackslash.unicode()) {
    case u'n': return u'\n';
    case u'r': return u'\r';
    case u't': return u'\t';
    default: return vAfterBackslash;
    }
}

// The replacement text for one match, with its references filled in.
QString Expand(const QString& vReplacement, const QRegularExpressionMatch& vMatch, const QString& vSubject)
{
    QString out;
    const qsizetype n = vReplacement.size();
    for (qsizetype i = 0; i < n;) {
        const QChar c = vReplacement[i];
        const QChar next = i + 1 < n ? vReplacement[i + 1] : QChar();
        if (c == u'\\' && i + 1 < n) {
            if (IsAsciiDigit(next)) {
                i += 1;
                out += vMatch.captured(ReadGroupNumber(vReplacement, i));
                continue;
            }
            out += EscapedCharacter(next);
            i += 2;
        } else if (c == u'$' && IsAsciiDigit(next)) {
            i += 1;
            out += vMatch.captured(ReadGroupNumber(vReplacement, i));
        } else if (c == u'$' && next == u'{' && vReplacement.indexOf(u'}', i + 2) > i + 2) {
            const qsizetype close = vReplacement.indexOf(u'}', i + 2);
            const QString name = vReplacement.mid(i + 2, close - i - 2);
            bool numeric = false;
            const int number = name.toInt(&numeric);
            out += numeric ? vMatch.captured(number) : vMatch.captured(name);
            i = close + 1;
        } else if (c == u'$' && (next == u'&' || next == u'`' || next == u'\'')) {
            if (next == u'&')
                out += vMatch.captured(0);
            else if (next == u'`')
                out += vSubject.left(vMatch.capturedStart(0));
            else
                out += vSubject.mid(vMatch.capturedEnd(0));
            i += 2;
        } else {
            out += c;
            i += 1;
        }
    }
    return out;
}

} // namespace

bool CommonLibClass::IsMatch(const QString& vString, const QString& vRegEx, const QString& vOption)
{
    const auto form = ParseForm(QStringLiteral("/") + vRegEx + u'/' + vOption, false);
    if (!form)
        return false;
    const QRegularExpression re = Compile(*form);
    return re.isValid() && re.match(vString).hasMatch();
}

QString CommonLibClass::ReplaceRegex(const QString& vString, const QString& vRegEx)
{
    const auto form = ParseForm(vRegEx, true);
    if (!form)
        return vString;
    const QRegularExpression re = Compile(*form);
    if (!re.isValid())
        return vString;

    const bool global = form->options.contains(u'g');
    QString out;
    qsizetype done = 0;
    QRegularExpressionMatchIterator it = re.globalMatch(vString);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        out += QStringView(vString).sliced(done, match.capturedStart(0) - done);
        out += Expand(form->replacement, match, vString);
        done = match.capturedEnd(0);
        if (!global)
            break;
    }
    out += QStringView(vString).sliced(done);
    return out;
}
