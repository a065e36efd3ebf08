#include "SamplePage.h"

#include <QFont>
#include <QPainter>

namespace {

const char16_t* const kLines[] = {
    u"本書は、Marnoquill の表示を確かめるための見本文書です。",
    u"タブごとに一つのファイルを開き、ページ単位で読み進めます。",
    u"見開き表示では、右から左へ読む向きにも切り替えられます。",
    u"表示サイズは横幅、ページ全体、100% から 500% までの七段階です。",
    u"移動量を変えると、前ページ・次ページで複数ページずつ進みます。",
};

} // namespace

QImage DrawSamplePage(int vPage, int vTotal, QSize vSize)
{
    QImage page(vSize, QImage::Format_RGB32);
    page.fill(Qt::white);
    QPainter p(&page);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::black);
    const int w = vSize.width();
    const int h = vSize.height();
    const int margin = w / 10;

    QFont heading(QStringLiteral("Noto Sans CJK JP"));
    heading.setPixelSize(h / 28);
    heading.setBold(true);
    p.setFont(heading);
    p.drawText(QRect(margin, h / 14, w - 2 * margin, h / 18), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("見本文書 第%1ページ").arg(vPage));
    p.drawLine(margin, h / 14 + h / 18, w - margin, h / 14 + h / 18);

    QFont number(QStringLiteral("Noto Sans CJK JP"));
    number.setPixelSize(h / 5);
    number.setBold(true);
    p.setFont(number);
    p.drawText(QRect(0, h / 6, w, h / 4), Qt::AlignCenter, QString::number(vPage));

    QFont body(QStringLiteral("Noto Sans CJK JP"));
    body.setPixelSize(h / 50);
    p.setFont(body);
    int y = h / 2;
    for (int i = 0; y < h - h / 8; ++i, y += h / 30)
        p.drawText(margin, y, QString::fromUtf16(kLines[(i + vPage) % std::size(kLines)]));

    p.setFont(body);
    p.drawText(QRect(0, h - h / 12, w, h / 24), Qt::AlignCenter, QStringLiteral("- %1 / %2 -").arg(vPage).arg(vTotal));
    return page;
}
