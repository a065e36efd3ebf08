// Settings files damaged in every small way a disk, an editor or a person can damage them. The
// reader must answer each with a tree or a numbered error, never a crash or a hang, and what it
// did read must write out and read back the same.

#include "settings/DataSaveLoadClass.h"
#include "support/AppError.h"
#include "support/Cp932.h"

#include "common/TestFiles.h"

#include <gtest/gtest.h>

#include <random>

namespace {

SDC NewNode() { return std::make_shared<StructuredDataClass>(); }

const QStringList kWords = {
    QStringLiteral("Value"), QStringLiteral("ウインドウ"), QStringLiteral("[!Tab]"),
    QStringLiteral("表示ソ"), QStringLiteral("a\tb"), QStringLiteral("x\r\ny"),
    QStringLiteral("[!#]"), QStringLiteral("[!Thread]"), QStringLiteral("\\g\\"),
    QStringLiteral("～"), QString(), QStringLiteral("12"),
};

void Grow(std::mt19937& vRng, StructuredDataClass& vNode, int vDepth)
{
    const int entries = static_cast<int>(vRng() % 8);
    for (int i = 0; i < entries; ++i) {
        const QString key = kWords[vRng() % kWords.size()] + QString::number(vRng() % 50);
        if (vDepth < 4 && vRng() % 4 == 0)
            Grow(vRng, *vNode.CreateThread(key), vDepth + 1);
        else
            vNode.AddData(kWords[vRng() % kWords.size()], key);
    }
}

QByteArray ValidFile(std::mt19937& vRng)
{
    QString text;
    for (const char* label : {"Before", "DetailSet", "After"}) {
        auto tree = NewNode();
        Grow(vRng, *tree, 0);
        DataSaveLoadClass io;
        io.SetData(tree);
        text += io.GetSaveString(QString::fromLatin1(label));
    }
    return Cp932::Encode(text);
}

QByteArray Mutate(std::mt19937& vRng, QByteArray vBytes)
{
    static const char kPieces[][12] = {"\t", "\r\n", "\r", "\n", "[!Thread]", "[!LABEL_", "]", "[!#]",
                                       "\x81", "\xff", "\t\t\t\t", "[!CrLf]"};
    const int edits = 1 + static_cast<int>(vRng() % 6);
    for (int e = 0; e < edits; ++e) {
        const qsizetype size = vBytes.size();
        const qsizetype at = size > 0 ? static_cast<qsizetype>(vRng() % size) : 0;
        switch (vRng() % 6) {
        case 0:
            if (size > 0)
                vBytes[at] = static_cast<char>(vRng() % 256);
            break;
        case 1: vBytes.insert(at, kPieces[vRng() % std::size(kPieces)]); break;
        case 2: vBytes.remove(at, static_cast<qsizetype>(vRng() % 16)); break;
        case 3: vBytes.truncate(at); break;
        case 4: vBytes.insert(at, vBytes.mid(static_cast<qsizetype>(vRng() % (size + 1)), 40)); break;
        default:
            for (int i = 0; i < 8; ++i)
                vBytes.insert(at, static_cast<char>(vRng() % 256));
            break;
        }
    }
    return vBytes;
}

QString SaveString(const SDC& vTree)
{
    DataSaveLoadClass io;
    io.SetData(vTree);
    return io.GetSaveString(QStringLiteral("DetailSet"));
}

} // namespace

TEST(SettingsMutation, DamagedFilesGiveATreeOrANumberedError)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Marnoquill.ini"));
    std::mt19937 rng(20261121);
    int loaded = 0;
    int refused = 0;
    for (int round = 0; round < 3000; ++round) {
        const QByteArray bytes = round % 10 == 9 ? QByteArray::fromStdString(std::string(
                                                       static_cast<size_t>(rng() % 400), '\0'))
                                                 : Mutate(rng, ValidFile(rng));
        QByteArray input = bytes;
        if (round % 10 == 9)  // a file of random bytes
            for (char& c : input)
                c = static_cast<char>(rng() % 256);
        testfiles::WriteBytes(path, input);

        auto tree = NewNode();
        DataSaveLoadClass io;
        io.SetData(tree);
        try {
            io.Load(path, QStringLiteral("DetailSet"));
            ++loaded;
        } catch (const AppError& e) {
            ASSERT_TRUE(e.Number() == 5 || e.Number() == 9 || e.Number() == 6)
                << "round " << round << ": " << e.Number();
            ++refused;
        }
        // Whatever was read writes out and reads back to the same text, unless it holds keys or
        // values that the format can't protect (a "[!Thread]" or "[!#]" key, a head-like key,
        // literal escape texts); those only have to load without harm.
        const QString once = SaveString(tree);
        const bool plain = !once.mid(once.indexOf(QLatin1Char('\n'))).contains(QLatin1String("[!"));
        auto again = NewNode();
        DataSaveLoadClass reader;
        reader.SetData(again);
        try {
            reader.LoadString(once, QStringLiteral("DetailSet"));
        } catch (const AppError&) {
            ASSERT_FALSE(plain) << "round " << round;
            continue;
        }
        if (plain) {
            ASSERT_EQ(SaveString(again), once) << "round " << round;
        }
    }
    EXPECT_GT(loaded, 100);
    EXPECT_GT(refused, 100);
}
