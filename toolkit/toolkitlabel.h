#ifndef SKINWIDGETS_TOOLKIT_TOOLKITLABEL_H
#define SKINWIDGETS_TOOLKIT_TOOLKITLABEL_H

#include "toolkit/export.h"
#include "toolkit/toolkitwidget.h"

#include <QBitmap>
#include <QLabel>
#include <QPointer>

#include <tuple>

class QPainter;

/*
 * A label of the old interface: its contents are drawn by an operation that can draw them anywhere, into a one-bit
 * picture too, and an automatic mask follows them. Without an updateMask() of its own, the mask is what the contents
 * cover.
 *
 * The operations below update the mask at once. A change through a plain QLabel pointer updates it
 * - as soon as the event loop comes to it, when the label has a visible parent and no fixed size;
 * - when the label is shown, if it was hidden;
 * - otherwise, and always for setScaledContents() and the next frame of a movie, after the label's next paint event.
 * The last one never comes while the mask is empty: what then happens to a label that is a window, or of a fixed size,
 * shows with the next resize, change of font or call of updateMask().
 *
 * Selected text and the focus of links in a label with text interaction are not drawn.
 */
class SKINWIDGETS_EXPORT ToolkitLabel : public ToolkitWidget<QLabel>
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(Qt::TextFormat textFormat READ textFormat WRITE setTextFormat)
    Q_PROPERTY(QPixmap pixmap READ pixmap WRITE setPixmap)
    Q_PROPERTY(bool scaledContents READ hasScaledContents WRITE setScaledContents)
    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment)
    Q_PROPERTY(bool wordWrap READ wordWrap WRITE setWordWrap)
    Q_PROPERTY(int margin READ margin WRITE setMargin)
    Q_PROPERTY(int indent READ indent WRITE setIndent)

public:
    // An empty label without an automatic mask.
    explicit ToolkitLabel(QWidget* parent = nullptr, const char* name = nullptr, WFlags f = 0);
    ~ToolkitLabel() override;

    // As QLabel's operations of the same names.
    virtual void setTextFormat(Qt::TextFormat format);
    virtual void setAlignment(Qt::Alignment alignment);
    virtual void setWordWrap(bool on);
    virtual void setIndent(int indent);
    virtual void setMargin(int margin);
    virtual void setScaledContents(bool on);
    virtual void setBuddy(QWidget* buddy);

    void setAutoMask(bool enable) override;
    // Makes contentsMask() the mask.
    void updateMask() override;

public slots:
    // As QLabel's slots of the same names: contents of one kind take the place of the others.
    virtual void setText(const QString& text);
    virtual void setPixmap(const QPixmap& pixmap);
    virtual void setPicture(const QPicture& picture);
    virtual void setMovie(QMovie* movie);
    virtual void setNum(int number);
    virtual void setNum(double number);
    virtual void clear();

protected:
    // Draws what the label shows inside its frame, in widget coordinates, with the painter's pen as the colour of text
    // and of one-bit pixmaps. The painter has the label's font. On a one-bit device everything that the contents cover
    // is drawn in that colour, pixmaps and coloured text too.
    virtual void drawContents(QPainter* painter);

    // A one-bit picture of the label's size in which the contents are drawn in color1 on color0. Null for a label
    // without area.
    QBitmap contentsMask();

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    // What a mask depends on and no event tells of: text, keys of pixmap, movie frame and picture, alignment, indent,
    // margin, word wrap, text format, scaled contents, buddy.
    using Contents = std::tuple<QString, qint64, qint64, const void*, int, int, int, bool, int, bool, const QWidget*>;
    Contents currentContents() const;
    void noticeContents();
    void watchParent();

    bool showsMnemonic() const;
    QRect innerRect() const;
    QRect textRect() const;
    int visualAlignment(Qt::LayoutDirection direction) const;
    void drawPlainText(QPainter* painter);
    void drawDocument(QPainter* painter);
    void drawPixmapContents(QPainter* painter, const QPixmap& pixmap);
    void drawPictureContents(QPainter* painter);
    bool drawsPlainText() const;
    void drawColoured(QPainter* painter);
    void drawCover(QPainter* painter);
    QPixmap shownPixmap();

    Contents m_masked;
    QPointer<QWidget> m_watched;
    QPixmap m_scaled;
    qint64 m_scaledFrom = 0;
};

#endif
