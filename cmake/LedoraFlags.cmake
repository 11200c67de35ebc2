# What every target of this project is compiled with. Linked PRIVATE, so that nothing of it reaches
# a program that uses the installed libraries.
add_library(ledora_flags INTERFACE)

target_compile_options(ledora_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
    -Wconversion -Wno-sign-conversion
    # Clang also objects to a parameter of a nested class that is named like a field of the outer one.
    $<$<CXX_COMPILER_ID:GNU>:-Wshadow>
    $<$<BOOL:${LEDORA_WERROR}>:-Werror>)

target_compile_definitions(ledora_flags INTERFACE
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_STRICT_ITERATORS
    $<$<NOT:$<CONFIG:Debug>>:QT_MESSAGELOGCONTEXT>)

# Hundreds of programs are linked, and the usual linker takes longer for each than to compile it.
option(LEDORA_LLD "Link with lld" OFF)
if(LEDORA_LLD)
    add_link_options(-fuse-ld=lld)
endif()

if(LEDORA_SANITIZE)
    # Global, not on a target: instrumented and plain code must not meet in one program.
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

if(LEDORA_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined
                        -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

if(LEDORA_SANITIZE_THREAD)
    if(LEDORA_SANITIZE)
        message(FATAL_ERROR "The thread sanitizer does not go with the address sanitizer.")
    endif()
    add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
    add_link_options(-fsanitize=thread)
endif()
