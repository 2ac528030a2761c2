#include "toolkit/toolkitlabel.h"

#include <QAbstractTextDocumentLayout>
#include <QIcon>
#include <QMovie>
#include <QPainter>
#include <QPicture>
#include <QStyleOption>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>

#include <algorithm>

namespace
{

Qt::TextFormat effectiveFormat(const QLabel& label)
{
    if (label.textFormat() != Qt::AutoText)
        return label.textFormat();
    return Qt::mightBeRichText(label.text()) ? Qt::RichText : Qt::PlainText;
}

// A label's document spells a mnemonic as an underlined letter.
void underlineMnemonic(QTextDocument& document, bool underlined)
{
    QTextCursor cursor = document.find(QStringLiteral("&"));
    if (cursor.isNull())
        return;
    cursor.deleteChar();
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    QTextCharFormat format;
    format.setFontUnderline(underlined);
    cursor.mergeCharFormat(format);
}

void setDocumentText(QTextDocument& document, const QLabel& label)
{
    switch (effectiveFormat(label)) {
    case Qt::MarkdownText:
        document.setMarkdown(label.text());
        break;
    case Qt::RichText:
        document.setHtml(label.text());
        break;
    default:
        document.setPlainText(label.text());
        break;
    }
}

void setDocumentLayout(QTextDocument& document, const QLabel& label, int width)
{
    QTextOption option = document.defaultTextOption();
    option.setAlignment(label.alignment());
    option.setWrapMode(label.wordWrap() ? QTextOption::WordWrap : QTextOption::ManualWrap);
    document.setDefaultTextOption(option);
    QTextFrameFormat format = document.rootFrame()->frameFormat();
    format.setMargin(0);
    document.rootFrame()->setFrameFormat(format);
    document.setTextWidth(width);
}

} // namespace

ToolkitLabel::ToolkitLabel(QWidget* parent, const char* name, WFlags f) : ToolkitWidget(parent, name, f) {}

ToolkitLabel::~ToolkitLabel() = default;

void ToolkitLabel::setText(const QString& text)
{
    QLabel::setText(text);
    noticeContents();
}

void ToolkitLabel::setPixmap(const QPixmap& pixmap)
{
    QLabel::setPixmap(pixmap);
    noticeContents();
}

void ToolkitLabel::setPicture(const QPicture& picture)
{
    QLabel::setPicture(picture);
    noticeContents();
}

void ToolkitLabel::setMovie(QMovie* movie)
{
    QLabel::setMovie(movie);
    noticeContents();
}

void ToolkitLabel::setNum(int number)
{
    QLabel::setNum(number);
    noticeContents();
}

void ToolkitLabel::setNum(double number)
{
    QLabel::setNum(number);
    noticeContents();
}

void ToolkitLabel::clear()
{
    QLabel::clear();
    noticeContents();
}

void ToolkitLabel::setTextFormat(Qt::TextFormat format)
{
    QLabel::setTextFormat(format);
    noticeContents();
}

void ToolkitLabel::setAlignment(Qt::Alignment alignment)
{
    QLabel::setAlignment(alignment);
    noticeContents();
}

void ToolkitLabel::setWordWrap(bool on)
{
    QLabel::setWordWrap(on);
    noticeContents();
}

void ToolkitLabel::setIndent(int indent)
{
    QLabel::setIndent(indent);
    noticeContents();
}

void ToolkitLabel::setMargin(int margin)
{
    QLabel::setMargin(margin);
    noticeContents();
}

void ToolkitLabel::setScaledContents(bool on)
{
    QLabel::setScaledContents(on);
    noticeContents();
}

void ToolkitLabel::setBuddy(QWidget* buddy)
{
    QLabel::setBuddy(buddy);
    noticeContents();
}

void ToolkitLabel::setAutoMask(bool enable)
{
    m_masked = currentContents();
    ToolkitWidget::setAutoMask(enable);
    watchParent();
}

void ToolkitLabel::updateMask()
{
    setMaskBitmap(contentsMask());
}

QBitmap ToolkitLabel::contentsMask()
{
    QBitmap mask(size());
    if (mask.isNull())
        return mask;
    mask.clear();
    QPainter painter(&mask);
    painter.setPen(Qt::color1);
    painter.setBackground(QBrush(Qt::color0));
    painter.setFont(font());
    drawContents(&painter);
    return mask;
}

ToolkitLabel::Contents ToolkitLabel::currentContents() const
{
    const qint64 movieFrame = movie() ? movie()->currentPixmap().cacheKey() : 0;
    return {text(),           pixmap().cacheKey(), movieFrame,        picture().data(),    int(alignment()), indent(),
            QLabel::margin(), wordWrap(),          int(textFormat()), hasScaledContents(), buddy()};
}

void ToolkitLabel::noticeContents()
{
    if (!autoMask())
        return;
    const Contents contents = currentContents();
    if (contents == m_masked)
        return;
    m_masked = contents;
    updateMask();
}

// A label tells its parent to lay it out anew when its text or picture changes.
void ToolkitLabel::watchParent()
{
    QWidget* parent = autoMask() ? parentWidget() : nullptr;
    if (m_watched == parent)
        return;
    if (m_watched)
        m_watched->removeEventFilter(this);
    m_watched = parent;
    if (m_watched)
        m_watched->installEventFilter(this);
}

bool ToolkitLabel::event(QEvent* event)
{
    const bool accepted = ToolkitWidget::event(event);
    if (event->type() == QEvent::ParentChange)
        watchParent();
    else if (event->type() == QEvent::ContentsRectChange)
        updateAutoMask();
    return accepted;
}

bool ToolkitLabel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_watched && event->type() == QEvent::LayoutRequest)
        noticeContents();
    return ToolkitWidget::eventFilter(watched, event);
}

void ToolkitLabel::showEvent(QShowEvent* event)
{
    ToolkitWidget::showEvent(event);
    noticeContents();
}

void ToolkitLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawFrame(&painter);
    painter.setPen(QPen(palette().brush(foregroundRole()), painter.pen().widthF()));
    drawContents(&painter);
    painter.end();
    // A mask cannot change while its widget paints.
    if (autoMask() && currentContents() != m_masked)
        QMetaObject::invokeMethod(this, &ToolkitLabel::noticeContents, Qt::QueuedConnection);
}

void ToolkitLabel::drawContents(QPainter* painter)
{
    if (painter->device()->depth() == 1)
        drawCover(painter);
    else
        drawColoured(painter);
}

bool ToolkitLabel::drawsPlainText() const
{
    return !text().isEmpty() && effectiveFormat(*this) == Qt::PlainText;
}

void ToolkitLabel::drawColoured(QPainter* painter)
{
    if (drawsPlainText())
        drawPlainText(painter);
    else if (!text().isEmpty())
        drawDocument(painter);
    else if (!movie() && !picture().isNull())
        drawPictureContents(painter);
    else
        drawPixmapContents(painter, shownPixmap());
}

// Colours mean nothing to a one-bit device: each pixel that is more than half opaque counts. Not drawn there directly:
// large letters are filled by several threads at once, which lose bits of a byte that they share.
void ToolkitLabel::drawCover(QPainter* painter)
{
    QImage cover(size(), QImage::Format_ARGB32_Premultiplied);
    cover.fill(Qt::transparent);
    QPainter coverPainter(&cover);
    QFont crisp = painter->font();
    crisp.setStyleStrategy(QFont::NoAntialias);
    coverPainter.setFont(crisp);
    coverPainter.setPen(Qt::black);
    drawColoured(&coverPainter);
    coverPainter.end();
    painter->drawPixmap(0, 0, QBitmap::fromImage(cover.createAlphaMask()));
}

bool ToolkitLabel::showsMnemonic() const
{
    return buddy() && text().contains(QLatin1Char('&'));
}

int ToolkitLabel::visualAlignment(Qt::LayoutDirection direction) const
{
    return int(QStyle::visualAlignment(direction, alignment()));
}

QRect ToolkitLabel::innerRect() const
{
    const int margin = QLabel::margin();
    return contentsRect().adjusted(margin, margin, -margin, -margin);
}

QRect ToolkitLabel::textRect() const
{
    QRect area = innerRect();
    int indent = QLabel::indent();
    // A frame alone keeps the text off its lines by half a letter.
    if (indent < 0 && frameWidth())
        indent = fontMetrics().horizontalAdvance(QLatin1Char('x')) / 2 - QLabel::margin();
    if (indent <= 0)
        return area;
    const int side = visualAlignment(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    if (side & Qt::AlignLeft)
        area.setLeft(area.left() + indent);
    if (side & Qt::AlignRight)
        area.setRight(area.right() - indent);
    if (side & Qt::AlignTop)
        area.setTop(area.top() + indent);
    if (side & Qt::AlignBottom)
        area.setBottom(area.bottom() - indent);
    return area;
}

void ToolkitLabel::drawPlainText(QPainter* painter)
{
    QStyleOption option;
    option.initFrom(this);
    const bool leftToRight = !text().isRightToLeft();
    int flags = visualAlignment(leftToRight ? Qt::LeftToRight : Qt::RightToLeft);
    flags |= leftToRight ? Qt::TextForceLeftToRight : Qt::TextForceRightToLeft;
    if (wordWrap())
        flags |= Qt::TextWordWrap;
    if (showsMnemonic()) {
        flags |= Qt::TextShowMnemonic;
        if (!style()->styleHint(QStyle::SH_UnderlineShortcut, &option, this))
            flags |= Qt::TextHideMnemonic;
    }
    style()->drawItemText(painter, textRect(), flags, option.palette, isEnabled(), text());
}

void ToolkitLabel::drawDocument(QPainter* painter)
{
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    document.setDefaultFont(painter->font());
    setDocumentText(document, *this);
    if (showsMnemonic())
        underlineMnemonic(document, style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, this));
    QRect area = textRect();
    setDocumentLayout(document, *this, area.width());
    const int spare = area.height() - int(document.documentLayout()->documentSize().height());
    if (alignment() & Qt::AlignVCenter)
        area.translate(0, std::max(spare / 2, 0));
    else if (alignment() & Qt::AlignBottom)
        area.translate(0, std::max(spare, 0));

    QAbstractTextDocumentLayout::PaintContext context;
    context.palette = palette();
    context.palette.setColor(QPalette::Text, painter->pen().color());
    painter->save();
    painter->translate(area.topLeft());
    painter->setClipRect(QRect(QPoint(), area.size()), Qt::IntersectClip);
    document.documentLayout()->draw(painter, context);
    painter->restore();
}

QPixmap ToolkitLabel::shownPixmap()
{
    const QPixmap source = movie() ? movie()->currentPixmap() : pixmap();
    if (!hasScaledContents() || source.isNull())
        return source;
    const QSize size = innerRect().size() * devicePixelRatio();
    if (m_scaledFrom == source.cacheKey() && m_scaled.size() == size)
        return m_scaled;
    m_scaledFrom = source.cacheKey();
    m_scaled = movie()
                   ? source.scaled(size)
                   : QPixmap::fromImage(source.toImage().scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    m_scaled.setDevicePixelRatio(devicePixelRatio());
    return m_scaled;
}

void ToolkitLabel::drawPixmapContents(QPainter* painter, const QPixmap& pixmap)
{
    if (pixmap.isNull())
        return;
    QStyleOption option;
    option.initFrom(this);
    // A movie does not show whether its label is enabled.
    const bool greyed = !isEnabled() && !movie();
    style()->drawItemPixmap(painter, innerRect(), visualAlignment(layoutDirection()),
                            greyed ? style()->generatedIconPixmap(QIcon::Disabled, pixmap, &option) : pixmap);
}

void ToolkitLabel::drawPictureContents(QPainter* painter)
{
    const QPicture shown = picture();
    const QRect bounds = shown.boundingRect();
    const QRect area = innerRect();
    if (bounds.isEmpty())
        return;
    if (!hasScaledContents()) {
        const Qt::Alignment side = QStyle::visualAlignment(layoutDirection(), alignment());
        const QRect placed = QStyle::alignedRect(Qt::LeftToRight, side, bounds.size(), area);
        painter->drawPicture(placed.topLeft() - bounds.topLeft(), shown);
        return;
    }
    painter->save();
    painter->translate(area.topLeft());
    painter->scale(double(area.width()) / bounds.width(), double(area.height()) / bounds.height());
    painter->drawPicture(-bounds.topLeft(), shown);
    painter->restore();
}
