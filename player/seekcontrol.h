#ifndef SKINWIDGETS_PLAYER_SEEKCONTROL_H
#define SKINWIDGETS_PLAYER_SEEKCONTROL_H

#include "player/seekscale.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

class Playback;
class SliderSkin;
class TimeSkin;

/*
 * Shows where playback is on a slider and in a time display, seeks where the slider is released, and keeps bookmarks,
 * which the slider shows as markers.
 *
 * While the slider is dragged both show the place under the stylus, and playback goes on where it is. The slider is
 * disabled where the file's length is unknown or the file cannot be searched. Times are milliseconds.
 */
class SeekControl : public QObject
{
    Q_OBJECT

public:
    // The widgets belong to somebody else; either may be null.
    SeekControl(Playback* playback, SliderSkin* slider, TimeSkin* time);

    // Of the current file, in the order in which they were set. Each file keeps its own as long as this object lives.
    QList<qint64> bookmarks() const;

public slots:
    // Seeks by this much from the current position, bounded to the file.
    void seekBy(qint64 distance);
    // Marks the current position, as far as the slider has a free marker. A position has one bookmark at most, and a
    // file that cannot be searched has none.
    void setBookmark();
    // Removes the one nearest to the current position, of two equally near ones the one set first.
    void removeNearestBookmark();
    void removeAllBookmarks();

private:
    void updateFile();
    void showPosition();
    void showTime(qint64 position);
    void placeMarker(qint64 position);
    void dragTo(int value);
    void release(unsigned int value);

    Playback* m_playback;
    QPointer<SliderSkin> m_slider;
    QPointer<TimeSkin> m_time;
    // What the slider is set up for.
    QString m_file;
    SeekScale m_scale;
    bool m_dragged = false;
    QHash<QString, QList<qint64>> m_bookmarks;
    // The slider's marker for each bookmark of the current file.
    QHash<qint64, int> m_markers;
    QTimer m_releasedTimer;
};

#endif
