# How every target is compiled. Results must be equal bit by bit on every compiler, so no fused
# multiply-add and no fast maths.
add_library(vsq_warnings INTERFACE)
if(MSVC)
    # The host's headers are taken as those of a system, since they aren't ours to mend.
    target_compile_options(vsq_warnings INTERFACE
        # A log statement's level is known when it is compiled, which is what 4127 complains of.
        /W4 /wd4127 /permissive- /utf-8 /fp:precise /external:anglebrackets /external:W0)
    if(NOT MAXSDK_ROOT)
        # Some warnings of the host's headers come only as code is generated, and can't be kept out.
        target_compile_options(vsq_warnings INTERFACE /WX)
    endif()
    target_compile_definitions(vsq_warnings INTERFACE _CRT_SECURE_NO_WARNINGS)
else()
    target_compile_options(vsq_warnings INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Werror -ffp-contract=off)
endif()
if(WIN32)
    target_compile_definitions(vsq_warnings INTERFACE UNICODE _UNICODE NOMINMAX)
    if(NOT MAXSDK_ROOT)
        # The host's headers rely on all that windows.h brings.
        target_compile_definitions(vsq_warnings INTERFACE WIN32_LEAN_AND_MEAN)
    endif()
endif()
if(VSQ_SANITIZE)
    add_compile_options(-fsanitize=${VSQ_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    # With the checks in between, GCC takes the standard library's own variables for unset ones.
    add_compile_options(-Wno-maybe-uninitialized)
    add_link_options(-fsanitize=${VSQ_SANITIZE})
endif()
