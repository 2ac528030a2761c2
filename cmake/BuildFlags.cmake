# How everything in this tree is compiled; never part of what users of the library inherit.
add_library(SkinWidgetsBuildFlags INTERFACE)
target_compile_options(SkinWidgetsBuildFlags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    # Qt's own macros (logging, tests) are called without arguments for their dots.
    $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>
    $<$<BOOL:${SKINWIDGETS_WERROR}>:-Werror>
)
if(SKINWIDGETS_SANITIZE)
    target_compile_options(SkinWidgetsBuildFlags INTERFACE
        -fsanitize=${SKINWIDGETS_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(SkinWidgetsBuildFlags INTERFACE -fsanitize=${SKINWIDGETS_SANITIZE})
endif()
