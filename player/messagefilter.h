#ifndef SKINWIDGETS_PLAYER_MESSAGEFILTER_H
#define SKINWIDGETS_PLAYER_MESSAGEFILTER_H

// Keeps off stderr what is no news to the user: the line that a slider prints for every marker it loses, what the
// backends of Qt Multimedia say about their own workings and what readers of pictures say about broken ones;
// QT_LOGGING_RULES brings back all but the first. What goes wrong with
// a file reaches the program as an error all the same. Call once.
void installMessageFilter();

#endif
