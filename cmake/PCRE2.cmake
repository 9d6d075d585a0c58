# PCRE2 for UTF-8. Debian brings a package file for pkg-config alone.

find_library(PCRE2_LIBRARY NAMES pcre2-8 REQUIRED)
find_path(PCRE2_INCLUDE_DIR pcre2.h REQUIRED)
add_library(PCRE2::PCRE2 INTERFACE IMPORTED)
target_link_libraries(PCRE2::PCRE2 INTERFACE ${PCRE2_LIBRARY})
target_include_directories(PCRE2::PCRE2 SYSTEM INTERFACE ${PCRE2_INCLUDE_DIR})
