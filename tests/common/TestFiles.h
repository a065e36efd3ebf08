#pragma once
// Small helpers for tests that write and read real files in a private temporary folder.

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <unistd.h>

namespace testfiles {

inline QByteArray ReadBytes(const QString& vPath)
{
    QFile f(vPath);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return f.readAll();
}

inline void WriteBytes(const QString& vPath, const QByteArray& vBytes)
{
    QFile f(vPath);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate)) << vPath.toStdString();
    ASSERT_EQ(f.write(vBytes), vBytes.size());
}

// Permission bits don't stop root, so tests of refused writes skip there.
inline bool RunningAsRoot() { return ::geteuid() == 0; }

// The shared corpus beside the checkout, or "" when this clone has none.
inline QString SharedTestData(const QString& vSub)
{
    const QString path = QStringLiteral(MQ_SHARED_TESTDATA "/") + vSub;
    return QDir(path).exists() ? path : QString();
}

} // namespace testfiles
