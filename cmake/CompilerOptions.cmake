# One place for the language level and warnings; every target links wordbm_options.
# wordbm_common and wordbm_sanitizers are its two halves, for the rare target that must not be
# sanitized (the LibreOffice worker: LibreOffice cannot run under AddressSanitizer).
add_library(wordbm_common INTERFACE)
target_compile_features(wordbm_common INTERFACE cxx_std_20)
# Headers generated at configure time (app/Version.h).
target_include_directories(wordbm_common INTERFACE "${PROJECT_BINARY_DIR}/generated")
target_compile_options(wordbm_common INTERFACE
    $<$<CXX_COMPILER_ID:GNU,Clang>:-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wconversion -Wno-sign-conversion>)

option(WORDBM_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
add_library(wordbm_sanitizers INTERFACE)
if(WORDBM_SANITIZE)
    target_compile_options(wordbm_sanitizers INTERFACE
        -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    target_link_options(wordbm_sanitizers INTERFACE -fsanitize=address,undefined)
endif()

# The fuzz build instruments every library for libFuzzer's coverage and checks it as the asan build
# does; only the fuzz targets' own programs link libFuzzer's driver (fuzz/CMakeLists.txt).
if(WORDBM_FUZZ)
    target_compile_options(wordbm_sanitizers INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    target_link_options(wordbm_sanitizers INTERFACE -fsanitize=address,undefined)
endif()

add_library(wordbm_options INTERFACE)
target_link_libraries(wordbm_options INTERFACE wordbm_common wordbm_sanitizers)

# Adds the static library of the calling folder, made of every .cpp in it (main.cpp aside),
# linked to the libraries given after the name. A folder with headers only gets an INTERFACE target.
function(wordbm_library name)
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    if(sources)
        add_library(${name} STATIC ${sources})
        set(scope PUBLIC)
    else()
        add_library(${name} INTERFACE)
        set(scope INTERFACE)
    endif()
    target_include_directories(${name} ${scope} "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(${name} ${scope} wordbm_options ${ARGN})
endfunction()
