#ifndef SKINWIDGETS_PLAYER_ORDERSETTINGS_H
#define SKINWIDGETS_PLAYER_ORDERSETTINGS_H

#include <QObject>
#include <QString>

class Playback;

/*
 * Keeps between two starts of the program whether a playback is shuffled and repeated, in a file that is written at
 * each change. What is missing or damaged there counts as off; a file that cannot be written is none.
 */
class OrderSettings : public QObject
{
    Q_OBJECT

public:
    // Where the system wants the user's settings of the application.
    static QString standardFile();

    // Sets the playback, which belongs to somebody else, to what the file says.
    OrderSettings(Playback* playback, const QString& file, QObject* parent = nullptr);

private:
    void save(const QString& key, bool on) const;

    QString m_file;
};

#endif
