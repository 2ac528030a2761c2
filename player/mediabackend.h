#ifndef SKINWIDGETS_PLAYER_MEDIABACKEND_H
#define SKINWIDGETS_PLAYER_MEDIABACKEND_H

#include <QString>

// What the program has to know about the backends of Qt Multimedia.
namespace mediabackend
{

// Picks the backend that keeps time without a sound device, unless QT_MEDIA_BACKEND picks one. Call before any other
// use of Qt Multimedia.
void choose();

// Why nothing can be played here, empty if something can.
QString problem();

} // namespace mediabackend

#endif
