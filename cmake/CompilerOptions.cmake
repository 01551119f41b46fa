# One place for the language level and warnings; every target links wordbm_options.
add_library(wordbm_options INTERFACE)
target_compile_features(wordbm_options INTERFACE cxx_std_20)
# Headers generated at configure time (app/Version.h).
target_include_directories(wordbm_options INTERFACE "${PROJECT_BINARY_DIR}/generated")
target_compile_options(wordbm_options INTERFACE
    $<$<CXX_COMPILER_ID:GNU,Clang>:-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wconversion -Wno-sign-conversion>)

option(WORDBM_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(WORDBM_SANITIZE)
    target_compile_options(wordbm_options INTERFACE
        -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    target_link_options(wordbm_options INTERFACE -fsanitize=address,undefined)
endif()

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
