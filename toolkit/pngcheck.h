#ifndef SKINWIDGETS_TOOLKIT_PNGCHECK_H
#define SKINWIDGETS_TOOLKIT_PNGCHECK_H

#include <QByteArray>

namespace skinwidgets
{

bool isPng(const QByteArray& data);

// Whether a PNG file is whole: every chunk complete with the right checksum, up to the end chunk. The PNG library
// prints to the error output, past every message handler, what it thinks of a file that is not.
bool isWholePng(const QByteArray& data);

} // namespace skinwidgets

#endif
