#ifndef SKINWIDGETS_PLAYER_DISPLAYTEXT_H
#define SKINWIDGETS_PLAYER_DISPLAYTEXT_H

#include <QFont>
#include <QSize>
#include <QString>

// Texts from outside, such as tags and names of files, made fit for a small place. Lengths are pixels.
namespace displaytext
{

// Characters that count at most.
constexpr qsizetype longest = 1000;

// One line without control characters, with single blanks for line breaks and other white space, and without marks
// that would turn the direction of what stands beside it.
QString oneLine(const QString& text);

// One line that is no wider than the width, shortened at its end or in its middle.
QString elided(const QString& text, const QFont& font, int width, Qt::TextElideMode mode = Qt::ElideRight);

// One line broken into lines that fit into the size, the last one shortened at its end; separated by line feeds. At
// least one line, however low the place is.
QString wrapped(const QString& text, const QFont& font, const QSize& size);

// A title and a file's name that stand side by side with a gap in between.
struct Heading {
    QString title;
    // Null where there is none.
    QString file;
};

// Shortens them so that together they are no wider than the width: the name in its middle, down to a third of the
// width if need be, and then the title at its end. Without a title the name stands in its place.
Heading heading(const QString& title, const QString& file, const QFont& font, int gap, int width);

} // namespace displaytext

#endif
