# Hunspell. Debian brings a package file for pkg-config alone, and names the library after its version too.

find_library(HUNSPELL_LIBRARY NAMES hunspell hunspell-1.7 REQUIRED)
find_path(HUNSPELL_INCLUDE_DIR hunspell/hunspell.hxx REQUIRED)
add_library(Hunspell::Hunspell INTERFACE IMPORTED)
target_link_libraries(Hunspell::Hunspell INTERFACE ${HUNSPELL_LIBRARY})
target_include_directories(Hunspell::Hunspell SYSTEM INTERFACE ${HUNSPELL_INCLUDE_DIR})
