#ifndef SKINWIDGETS_PLAYER_MESSAGEFILTER_H
#define SKINWIDGETS_PLAYER_MESSAGEFILTER_H

// Keeps off stderr what is no news to the user: the line that a slider prints for every marker it loses, and what the
// backends of Qt Multimedia say about their own workings; QT_LOGGING_RULES brings the latter back. What goes wrong with
// a file reaches the program as an error all the same. Call once.
void installMessageFilter();

#endif
