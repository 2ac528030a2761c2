#include "player/playlist/playlistitem.h"

#include "listbox/listbox_skin.h"
#include "player/playlist/playlist.h"

#include <QCoreApplication>
#include <QPainter>

namespace
{

// Pixels.
constexpr int margin = 10;
constexpr int gap = 10;
constexpr int lengthWidth = 52;

constexpr int lineAlpha = 20;
constexpr int outlineAlpha = 110;

} // namespace

PlaylistItem::PlaylistItem(const PlaylistLook* look, int index, const PlaylistEntry& entry)
    : ListBoxSkinPixmap(look->mark),
      m_look(look),
      m_index(index)
{
    setEntry(entry);
}

void PlaylistItem::setEntry(const PlaylistEntry& entry)
{
    setText(entry.title.isEmpty() ? entry.name().toString() : entry.title);
    m_seconds = entry.seconds;
    m_isMissing = entry.isMissing;
}

const QPixmap* PlaylistItem::pixmap() const
{
    return m_isCurrentEntry ? ListBoxSkinPixmap::pixmap() : nullptr;
}

int PlaylistItem::height(const ListBoxSkin* /*listbox*/) const
{
    return m_look->rowHeight;
}

// The list box stretches its column to the viewport.
int PlaylistItem::width(const ListBoxSkin* /*listbox*/) const
{
    return 1;
}

void PlaylistItem::paint(QPainter* painter)
{
    const QRect row(0, 0, listBox() ? listBox()->visibleWidth() : 0, m_look->rowHeight);
    const QRect inside = row.adjusted(margin, 0, -margin, 0);
    paintOutline(painter, row);

    const QColor label = selected() ? m_look->selected : m_look->label;
    const QFont font = painter->font();
    painter->setFont(m_look->labelFont);
    painter->setPen(label);
    const QRect number(inside.left(), 0, m_look->numberWidth, row.height());
    paintNumber(painter, number);
    QRect length(inside.right() + 1 - lengthWidth, 0, lengthWidth, row.height());
    const QString lengthShown = lengthText();
    painter->drawText(length, Qt::AlignRight | Qt::AlignVCenter, lengthShown);

    painter->setFont(font);
    if (!selected() && !m_isMissing)
        painter->setPen(m_isCurrentEntry ? m_look->accent : m_look->text);
    QRect name = inside;
    name.setLeft(number.right() + 1 + gap);
    if (!lengthShown.isEmpty())
        name.setRight(length.left() - gap);
    const QString shown = painter->fontMetrics().elidedText(text(), Qt::ElideRight, name.width());
    painter->drawText(name, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

void PlaylistItem::paintNumber(QPainter* painter, const QRect& column) const
{
    if (m_isCurrentEntry && !m_look->mark.isNull()) {
        const QSize size = m_look->mark.size();
        painter->drawPixmap(column.right() + 1 - size.width(), (column.height() - size.height()) / 2, m_look->mark);
        return;
    }
    painter->drawText(column, Qt::AlignRight | Qt::AlignVCenter, QString::number(m_index + 1));
}

// A line below each row, and a frame around the one where the keys are while it is not selected.
void PlaylistItem::paintOutline(QPainter* painter, const QRect& row) const
{
    if (selected())
        return;
    QColor color = m_look->label;
    if (current()) {
        color.setAlpha(outlineAlpha);
        painter->setPen(color);
        painter->drawRect(row.adjusted(1, 0, -2, -2));
    }
    color.setAlpha(lineAlpha);
    painter->fillRect(row.left(), row.bottom(), row.width(), 1, color);
}

QString PlaylistItem::lengthText() const
{
    if (m_isMissing)
        return QCoreApplication::translate("PlaylistItem", "missing");
    if (m_seconds < 0)
        return QString();
    const int minutes = m_seconds / 60;
    const QLatin1Char zero('0');
    if (minutes < 60)
        return QStringLiteral("%1:%2").arg(minutes).arg(m_seconds % 60, 2, 10, zero);
    return QStringLiteral("%1:%2:%3").arg(minutes / 60).arg(minutes % 60, 2, 10, zero).arg(m_seconds % 60, 2, 10, zero);
}
