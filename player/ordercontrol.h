#ifndef SKINWIDGETS_PLAYER_ORDERCONTROL_H
#define SKINWIDGETS_PLAYER_ORDERCONTROL_H

#include <QObject>

class ImageButton;
class Playback;

/* Keeps two toggle buttons and the order of a playback alike: whether it is shuffled and whether it is repeated. */
class OrderControl : public QObject
{
    Q_OBJECT

public:
    // The buttons belong to somebody else; either may be null. They show the playback's order at once.
    OrderControl(Playback* playback, ImageButton* shuffle, ImageButton* repeat);

public slots:
    void toggleShuffle();
    void toggleRepeat();

private:
    Playback* m_playback;
};

#endif
