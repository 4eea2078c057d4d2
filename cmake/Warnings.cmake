# hullrider_options: what every target of our own is compiled with. Third-party headers are SYSTEM and stay quiet.
add_library(hullrider_options INTERFACE)
if(MSVC)
    target_compile_options(hullrider_options INTERFACE /W4 /WX /utf-8 /permissive-)
else()
    target_compile_options(hullrider_options INTERFACE
        -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wno-sign-conversion -Wold-style-cast -Wcast-qual
        -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND HULLRIDER_SANITIZE)
    # The sanitizers' instrumentation makes GCC see uninitialized values that are not there.
    target_compile_options(hullrider_options INTERFACE -Wno-maybe-uninitialized)
endif()
if(WIN32)
    target_compile_definitions(hullrider_options INTERFACE
        UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
endif()
if(MINGW)
    # GCC 12 sees overlaps in "text" + std::string that are not there.
    target_compile_options(hullrider_options INTERFACE -Wno-restrict)
    # One exe with nothing beside it: the compiler's own libraries are linked in too.
    target_link_options(hullrider_options INTERFACE -static $<$<CONFIG:Release>:-s>)
endif()
if(HULLRIDER_SANITIZE)
    target_compile_options(hullrider_options INTERFACE
        -fsanitize=${HULLRIDER_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(hullrider_options INTERFACE -fsanitize=${HULLRIDER_SANITIZE})
endif()
if(HULLRIDER_FUZZ)
    # Coverage for the fuzz targets' rooms; the targets themselves bring the main function.
    target_compile_options(hullrider_options INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(hullrider_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
