#ifndef SKINWIDGETS_PLAYER_INFOTEXT_H
#define SKINWIDGETS_PLAYER_INFOTEXT_H

#include <QColor>
#include <QString>
#include <QWidget>

/*
 * What plays, in lines over a panel: title, artist and album, each shortened to the width. Missing ones leave no gap,
 * and those that would reach below the widget are left out. Clicks go through it.
 */
class InfoText : public QWidget
{
    Q_OBJECT

public:
    struct Texts {
        QString title;
        QString artist;
        QString album;
    };
    struct Colors {
        QColor title = QColor(0xf4, 0xf8, 0xff);
        QColor artist = QColor(0xff, 0xa2, 0x4d);
        QColor album = QColor(0x7f, 0x90, 0xab);
    };

    InfoText(const Colors& colors, QWidget* parent);
    ~InfoText() override;

    const Texts& texts() const { return m_texts; }
    void setTexts(const Texts& texts);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Colors m_colors;
    Texts m_texts;
};

#endif
