#ifndef SKINWIDGETS_PLAYER_DETAILS_TRACKDETAILS_H
#define SKINWIDGETS_PLAYER_DETAILS_TRACKDETAILS_H

#include <QCoreApplication>
#include <QImage>
#include <QList>
#include <QString>

class QMediaMetaData;

/* What there is to say about a sound file, as texts for people: lines fit to be shown, as displaytext::oneLine() makes.
 */
struct TrackDetails {
    Q_DECLARE_TR_FUNCTIONS(TrackDetails)

public:
    struct Entry {
        QString label;
        QString value;
    };

    // Where there is no such tag what the playlist calls it, else the file's name.
    QString title;
    QString artist;
    // With the year.
    QString album;
    // What else is known, the sound first and the file last.
    QList<Entry> entries;
    // The picture in the file's tags, null where there is none.
    QImage cover;

    // An empty file name gives empty details. A duration of 0 or less is an unknown one, an empty listed title none.
    static TrackDetails of(const QString& file, const QMediaMetaData& tags, qint64 duration,
                           const QString& listedTitle = QString());

    // "3:05" or "1:03:05".
    static QString timeText(qint64 milliseconds);
};

#endif
