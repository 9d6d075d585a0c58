# Warnings, sanitizers and the compiler cache, the same for every target.

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Without leave to do so, ccache keeps nothing that was compiled with precompiled headers.
  set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      ${CCACHE_PROGRAM})
endif()

add_library(quillmark_flags INTERFACE)
target_compile_options(quillmark_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
  -Wimplicit-fallthrough -Wformat=2 -fno-strict-aliasing -fstack-protector-strong)
target_compile_definitions(quillmark_flags INTERFACE
  QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(QUILLMARK_SANITIZE OR QUILLMARK_FUZZ)
  target_compile_definitions(quillmark_flags INTERFACE QUILLMARK_SANITIZED)
endif()
if(QUILLMARK_WERROR)
  target_compile_options(quillmark_flags INTERFACE -Werror)
endif()
if(QUILLMARK_SANITIZE)
  target_compile_options(quillmark_flags INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer
                         -fno-sanitize-recover=undefined)
  target_link_options(quillmark_flags INTERFACE -fsanitize=address,undefined)
endif()
if(QUILLMARK_FUZZ)
  target_compile_options(quillmark_flags INTERFACE -fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer
                         -fno-sanitize-recover=undefined)
  target_link_options(quillmark_flags INTERFACE -fsanitize=address,undefined)
endif()
if(QUILLMARK_COVERAGE)
  target_compile_options(quillmark_flags INTERFACE --coverage)
  target_link_options(quillmark_flags INTERFACE --coverage)
endif()
