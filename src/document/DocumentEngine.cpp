#include "document/DocumentEngine.h"

#include "document/XdwApi.h"

void DocumentEngine::GlobalFree(qint32 vHandle)
{
    if (handles_.Free(vHandle))
        Succeed();
    else
        Fail(XdwResult::InvalidArg);
}

void DocumentEngine::Succeed()
{
    lastResult_ = XdwResult::Success;
    lastErrorText_.clear();
}

void DocumentEngine::Fail(qint32 vResult)
{
    Fail(vResult, GetXdwErrorText(vResult));
}

void DocumentEngine::Fail(qint32 vResult, const QString& vText)
{
    lastResult_ = vResult;
    lastErrorText_ = vText;
}

void DocumentEngine::Unavailable(const QString& vOperation)
{
    Fail(XdwResult::Unexpected, QStringLiteral("この文書エンジンは%1に対応していません。").arg(vOperation));
}
