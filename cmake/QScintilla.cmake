# QScintilla brings no package file of its own: find the library built for Qt 6 and its headers.

find_library(QSCINTILLA_LIBRARY NAMES qscintilla2_qt6 REQUIRED)
find_path(QSCINTILLA_INCLUDE_DIR Qsci/qsciscintillabase.h PATH_SUFFIXES qt6 x86_64-linux-gnu/qt6
          HINTS ${Qt6Core_INCLUDE_DIRS} REQUIRED)
add_library(QScintilla::QScintilla INTERFACE IMPORTED)
target_link_libraries(QScintilla::QScintilla INTERFACE ${QSCINTILLA_LIBRARY} Qt6::Widgets Qt6::PrintSupport)
target_include_directories(QScintilla::QScintilla SYSTEM INTERFACE ${QSCINTILLA_INCLUDE_DIR})
