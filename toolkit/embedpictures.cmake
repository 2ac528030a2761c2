# skinwidgets_embed_pictures(source name...)
# Writes a source file that defines skinwidgets::builtinPictures with the bytes of skins/builtin/NAME.png for each name,
# in the order given, and adds it to the library. Done when the build is configured, and again when a picture changes.
function(skinwidgets_embed_pictures source)
    set(blocks "")
    set(records "")
    foreach(name IN LISTS ARGN)
        set(file ${PROJECT_SOURCE_DIR}/skins/builtin/${name}.png)
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
        file(READ ${file} bytes HEX)
        string(LENGTH "${bytes}" digits)
        math(EXPR size "${digits} / 2")
        string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
        # Twenty bytes to a line.
        string(REPEAT "....." 20 line)
        string(REGEX REPLACE "(${line})" "\\1\n" bytes "${bytes}")
        string(APPEND blocks "const unsigned char ${name}[] = {\n${bytes}\n};\n")
        string(APPEND records "    {${size}, ${name}, \"${name}\"},\n")
    endforeach()
    file(CONFIGURE OUTPUT ${source} CONTENT [[
// Written by embedpictures.cmake.
#include "toolkit/builtinpictures.h"

namespace
{

@blocks@
} // namespace

const skinwidgets::BuiltinPicture skinwidgets::builtinPictures[] = {
@records@    {0, nullptr, nullptr},
};
]] @ONLY)
    set_source_files_properties(${source} TARGET_DIRECTORY SkinWidgets PROPERTIES SKIP_AUTOMOC ON)
    target_sources(SkinWidgets PRIVATE ${source})
endfunction()
