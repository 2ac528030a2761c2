#ifndef SKINWIDGETS_TOOLKIT_BUILTINPICTURES_H
#define SKINWIDGETS_TOOLKIT_BUILTINPICTURES_H

#include "toolkit/export.h"

#include <QByteArray>

namespace skinwidgets
{

// One picture that the library carries: a complete PNG file.
struct BuiltinPicture {
    unsigned int size;
    const unsigned char* data;
    const char* name;
};

// Every built-in picture; a record without data ends the table.
SKINWIDGETS_EXPORT extern const BuiltinPicture builtinPictures[];

// The PNG file of that name, fit for QImage. The array refers to the table's own bytes. An unknown name, and a null
// one, gives an empty array.
SKINWIDGETS_EXPORT QByteArray findBuiltinImage(const char* name);

} // namespace skinwidgets

#endif
