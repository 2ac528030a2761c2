#ifndef SKINWIDGETS_TOOLKIT_BUILTINPICTURES_H
#define SKINWIDGETS_TOOLKIT_BUILTINPICTURES_H

#include "toolkit/export.h"

#include <QByteArray>

namespace skinwidgets
{

// One picture that the library carries: a complete PNG file.
struct BuiltinPicture {
    // Bytes.
    unsigned int size;
    // The file; null in the record that ends the table.
    const unsigned char* data;
    // Without a file name ending, "scroll_bg_top".
    const char* name;
};

// Every built-in picture; a record without data ends the table.
SKINWIDGETS_EXPORT extern const BuiltinPicture builtinPictures[];

// The PNG file of that name, fit for QImage. The array refers to the table's own bytes. An unknown name, and a null
// one, gives an empty array.
SKINWIDGETS_EXPORT QByteArray findBuiltinImage(const char* name);

} // namespace skinwidgets

#endif
