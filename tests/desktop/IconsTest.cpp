// The bar pictures on a bare machine (no icon theme at all) and under a theme that has them.
#include "viewer/ChromeIcons.h"
#include "viewer/MainWindowFixture.h"

#include <QDir>
#include <QImage>
#include <QScopeGuard>

namespace {

// Every picture a button or tab may ask for: icon keys, and the page buttons' own keys.
const std::pair<const char*, const char*> kAsked[] = {
    {"FILE02_16", "PREV_PAGE"}, {"FILE02_16", "NEXT_PAGE"}, {"FILE01_16", ""},   {"FILE02_16", ""},
    {"OPENFOLDER_16", ""},      {"RIGHTLEFT_16", ""},       {"UPDATE_16", ""},   {"OPTION_16", ""},
    {"WINDOWCLOSE01_16", ""},   {"HELP01_16", ""},          {"INFO_16", ""},     {"WINDOWCLOSE03_16", ""},
};

QImage Picture(const QIcon& vIcon) { return vIcon.pixmap(16, 16).toImage().convertToFormat(QImage::Format_ARGB32); }

// Puts the theme vName, searched in vFolder, in place for a scope.
class ScopedTheme {
public:
    ScopedTheme(const QString& vFolder, const QString& vName)
        : paths_(QIcon::themeSearchPaths()), name_(QIcon::themeName()), fallback_(QIcon::fallbackSearchPaths())
    {
        QIcon::setThemeSearchPaths({vFolder});
        QIcon::setFallbackSearchPaths({});
        QIcon::setThemeName(vName);
    }
    ~ScopedTheme()
    {
        QIcon::setThemeSearchPaths(paths_);
        QIcon::setFallbackSearchPaths(fallback_);
        QIcon::setThemeName(name_);
    }

private:
    QStringList paths_;
    QString name_;
    QStringList fallback_;
};

} // namespace

class IconsTest : public MainWindowTest {};

TEST_F(IconsTest, OnABareMachineEveryButtonHasADistinctPicture)
{
    ScopedTheme bare(dir.filePath(QStringLiteral("no-themes")), QStringLiteral("hicolor"));
    QList<QImage> seen;
    for (const auto& [key, button] : kAsked) {
        const QImage picture = Picture(ChromeIcon(QLatin1String(key), QLatin1String(button)));
        ASSERT_FALSE(picture.isNull()) << key << ' ' << button;
        EXPECT_FALSE(seen.contains(picture)) << key << ' ' << button << " looks like another button";
        seen.append(picture);
    }
    EXPECT_FALSE(ApplicationIcon().pixmap(64, 64).isNull());

    // On the window: back and forward are told apart, and neither is the file picture.
    frmMain& w = Window();
    const QImage previous = Picture(w.Button(QStringLiteral("PREV_PAGE"))->icon());
    const QImage next = Picture(w.Button(QStringLiteral("NEXT_PAGE"))->icon());
    EXPECT_NE(previous, next);
    EXPECT_NE(next, Picture(w.Button(QStringLiteral("FILE_OPEN"))->icon()));
}

TEST_F(IconsTest, TheDesktopThemeComesFirst)
{
    // A theme that has "go-next" only: a plain red square.
    const QString root = dir.filePath(QStringLiteral("themes"));
    const QString theme = root + QStringLiteral("/red");
    ASSERT_TRUE(QDir().mkpath(theme + QStringLiteral("/16x16/actions")));
    QFile index(theme + QStringLiteral("/index.theme"));
    ASSERT_TRUE(index.open(QIODevice::WriteOnly));
    index.write("[Icon Theme]\nName=red\nDirectories=16x16/actions\n\n[16x16/actions]\nSize=16\nType=Fixed\n");
    index.close();
    QImage red(16, 16, QImage::Format_ARGB32);
    red.fill(Qt::red);
    ASSERT_TRUE(red.save(theme + QStringLiteral("/16x16/actions/go-next.png")));

    ScopedTheme themed(root, QStringLiteral("red"));
    EXPECT_EQ(Picture(ChromeIcon(QStringLiteral("FILE02_16"), QStringLiteral("NEXT_PAGE"))).pixelColor(8, 8),
              QColor(Qt::red));
    // What the theme lacks still comes from our own pictures.
    EXPECT_NE(Picture(ChromeIcon(QStringLiteral("FILE02_16"), QStringLiteral("PREV_PAGE"))).pixelColor(8, 8),
              QColor(Qt::red));
    EXPECT_FALSE(Picture(ChromeIcon(QStringLiteral("HELP01_16"))).isNull());
}
