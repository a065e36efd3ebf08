#include "engine/FormatError.h"

#include "document/XdwApi.h"

namespace xdw {

void Refuse(const QString& vReason)
{
    throw FormatError{XdwResult::BadFormat, vReason};
}

void RefuseNewer(const QString& vReason)
{
    throw FormatError{XdwResult::NewerVersion, vReason};
}

} // namespace xdw
