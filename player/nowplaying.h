#ifndef SKINWIDGETS_PLAYER_NOWPLAYING_H
#define SKINWIDGETS_PLAYER_NOWPLAYING_H

#include <QImage>
#include <QObject>
#include <QPointer>
#include <QString>

class InfoText;
class LabelImage;
class Playback;
class TitleBar;

/*
 * Shows on a title bar, a picture label and as texts which file plays: its title and name, its cover, its artist and
 * album.
 *
 * The cover is the one in the file, else a picture beside it, else one for all; it fills the label.
 */
class NowPlaying : public QObject
{
    Q_OBJECT

public:
    struct Widgets {
        TitleBar* titleBar = nullptr;
        LabelImage* cover = nullptr;
        InfoText* info = nullptr;
    };

    // The widgets belong to somebody else; each may be null. The title bar's texts end before titleEnd, in pixels from
    // its left edge.
    NowPlaying(const Playback* playback, const Widgets& widgets, int titleEnd, const QImage& defaultCover);

private:
    void showFile();
    void showTags();
    void showHeading(const QString& title);
    void showCover(const QImage& tagged);

    const Playback* m_playback;
    QPointer<TitleBar> m_titleBar;
    QPointer<LabelImage> m_cover;
    QPointer<InfoText> m_info;
    int m_titleEnd;
    QImage m_defaultCover;
    QImage m_coverBeside;
    // What shows.
    QString m_file;
};

#endif
