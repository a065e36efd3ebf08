// The store: walking and making paths of nested nodes.
#include "store/StructuredDataClass.h"

#include "store/StructuredDataInternal.h"

using namespace storedetail;

// ---- paths -----------------------------------------------------------------------------------

void StructuredDataClass::SplitPath(const QString& vPath)
{
    pathParts_ = vPath.isEmpty() ? QStringList() : vPath.split(QLatin1Char('\\'));
}

// Pieces 2 to (count - 1) are walked: "\A\B\", "x\A\B\" and "\A\B\y" all mean A then B. A step
// that fails ends the walk quietly with the node reached so far.
template <class Step>
SDC StructuredDataClass::WalkPath(const QString& vPath, const QString& vOperation, Step vStep)
{
    SplitPath(vPath);
    const QStringList parts = pathParts_;
    SDC held = weak_from_this().lock();
    StructuredDataClass* node = this;
    for (qsizetype i = 1; i + 1 < parts.size(); ++i) {
        try {
            if (!node)
                throw AppError(AppError::ObjectNotSet);
            SDC next = vStep(*node, parts[i]);
            held = next;
            node = next.get();
        } catch (const AppError& e) {
            if (e.Number() == AppError::InvalidArgument)
                throw MissingThread(vOperation, parts[i]);
            break;
        }
    }
    return held;
}

SDC StructuredDataClass::ThreadOfPath(const QString& vPath)
{
    return WalkPath(vPath, QStringLiteral("ThreadOfPath"),
                    [](StructuredDataClass& n, const QString& piece) { return n.Thread(piece); });
}

SDC StructuredDataClass::ThreadOfPathForNumber(const QString& vPath)
{
    return WalkPath(vPath, QStringLiteral("ThreadOfPathForNumber"),
                    [](StructuredDataClass& n, const QString& piece) {
                        int number = 0;
                        return ReadNumber(piece, number) ? n.ThreadOfNumber(Checked16(number))
                                                         : n.Thread(piece);
                    });
}

bool StructuredDataClass::ExistsOfPath(const QString& vPath)
{
    SplitPath(vPath);
    StructuredDataClass* node = this;
    for (qsizetype i = 1; i + 1 < pathParts_.size(); ++i) {
        const int at = node->IndexOfKey(pathParts_[i]);
        if (at < 0 || node->entries_[at].kind != Kind::Thread || !node->entries_[at].thread)
            return false;
        node = node->entries_[at].thread.get();
    }
    return true;
}

// A piece that isn't a number passes the existence test by key and then ends the walk: the
// type check reads it as a number, and that failure leaves the answer true.
bool StructuredDataClass::ExistsOfPathForNumber(const QString& vPath)
{
    SplitPath(vPath);
    const QStringList parts = pathParts_;
    StructuredDataClass* node = this;
    for (qsizetype i = 1; i + 1 < parts.size(); ++i) {
        try {
            int number = 0;
            const bool numeric = ReadNumber(parts[i], number);
            if (!(numeric ? node->ExistsOfNo(Checked16(number)) : node->Exists(parts[i])))
                return false;
            if (!numeric)
                throw AppError(AppError::TypeMismatch);
            const Entry* e = node->EntryAt(static_cast<qint16>(number));
            if (e->kind != Kind::Thread || !e->thread)
                return false;
            node = e->thread.get();
        } catch (const AppError& e) {
            if (e.Number() == AppError::InvalidArgument)
                throw MissingThread(QStringLiteral("ThreadOfPath"), parts[i]);
            break;
        }
    }
    return true;
}

SDC StructuredDataClass::CreateThreadOfPath(const QString& vPath, const QString& vKeyMode)
{
    SplitPath(vPath);
    const QStringList parts = pathParts_;
    SDC held = weak_from_this().lock();
    StructuredDataClass* node = this;
    QString key;
    for (qsizetype i = 1; i + 1 < parts.size(); ++i) {
        if (!node)
            throw AppError(AppError::ObjectNotSet);
        if (vKeyMode.isEmpty())
            key = parts[i];
        else if (vKeyMode == QLatin1String("FullPath"))
            key = node->Parent() ? node->ObjectKey() + parts[i] + QLatin1Char('\\')
                                 : QLatin1Char('\\') + parts[i] + QLatin1Char('\\');
        held = node->Exists(key) ? node->Thread(key) : node->CreateThread(key);
        node = held.get();
    }
    return held;
}

QString StructuredDataClass::GetPath(const QString& vPath) const
{
    const SDC parent = Parent();
    return parent ? parent->GetPath(name_ + QLatin1Char('\\') + vPath) : QLatin1Char('\\') + vPath;
}

QString StructuredDataClass::GetPathOfKey(const QString& vPath) const
{
    const SDC parent = Parent();
    return parent ? parent->GetPathOfKey(objectKey_ + QLatin1Char('\\') + vPath)
                  : QLatin1Char('\\') + vPath;
}
