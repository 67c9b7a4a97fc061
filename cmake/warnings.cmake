# Compile options of every target. All compilers must produce bit-identical results, so there is no
# fused multiply-add and no fast maths.
add_library(vsq_warnings INTERFACE)
if(MSVC)
    # The host's headers count as system headers, because we can't fix their warnings.
    target_compile_options(vsq_warnings INTERFACE
        # Warning 4127 complains about constant conditions, such as the level check of a log
        # statement.
        /W4 /wd4127 /permissive- /utf-8 /fp:precise /external:anglebrackets /external:W0)
    if(NOT MAXSDK_ROOT)
        # Some warnings in the host's headers appear only during code generation and can't be
        # switched off.
        target_compile_options(vsq_warnings INTERFACE /WX)
    endif()
    target_compile_definitions(vsq_warnings INTERFACE _CRT_SECURE_NO_WARNINGS)
else()
    target_compile_options(vsq_warnings INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Werror -ffp-contract=off
        # Log statements name their source files; a package must not tell where it was built.
        -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
endif()
if(WIN32)
    target_compile_definitions(vsq_warnings INTERFACE UNICODE _UNICODE NOMINMAX)
    if(NOT MAXSDK_ROOT)
        # The host's headers need all of windows.h, so this is only set without them.
        target_compile_definitions(vsq_warnings INTERFACE WIN32_LEAN_AND_MEAN)
    endif()
endif()
if(VSQ_SANITIZE)
    add_compile_options(-fsanitize=${VSQ_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    # With the sanitizers' checks, GCC wrongly reports uninitialised variables in the standard
    # library.
    add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    add_link_options(-fsanitize=${VSQ_SANITIZE})
endif()
