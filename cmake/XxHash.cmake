# xxHash: fast checksums. Debian brings a package file for pkg-config alone.

find_library(XXHASH_LIBRARY NAMES xxhash REQUIRED)
find_path(XXHASH_INCLUDE_DIR xxhash.h REQUIRED)
add_library(xxHash::xxHash INTERFACE IMPORTED)
target_link_libraries(xxHash::xxHash INTERFACE ${XXHASH_LIBRARY})
target_include_directories(xxHash::xxHash SYSTEM INTERFACE ${XXHASH_INCLUDE_DIR})
