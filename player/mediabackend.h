#ifndef SKINWIDGETS_PLAYER_MEDIABACKEND_H
#define SKINWIDGETS_PLAYER_MEDIABACKEND_H

#include <QString>

// What the program has to know about the backends of Qt Multimedia.
namespace mediabackend
{

// Picks the backend that keeps time without a sound device, unless QT_MEDIA_BACKEND picks one. Call before any other
// use of Qt Multimedia.
void choose();

// Keeps off stderr what the backends say about their own workings; QT_LOGGING_RULES brings it back. What goes wrong
// with a file reaches the program as an error all the same.
void silence();

// Why nothing can be played here, empty if something can.
QString problem();

} // namespace mediabackend

#endif
