# quillmark_precompiled(TARGET core|widgets|tests)
#
# Lets a target start from headers that were parsed once for all targets of its kind: parsing Qt is most of what a source
# costs to compile. Every source still includes what it uses; clang-tidy compiles it without these headers.

set(QUILLMARK_PRECOMPILED_core
  <QByteArray> <QDir> <QFile> <QHash> <QList> <QObject> <QString> <QStringList> <QVariant>
  <algorithm> <array> <functional> <memory> <optional> <string> <string_view> <utility> <vector>)
set(QUILLMARK_PRECOMPILED_widgets ${QUILLMARK_PRECOMPILED_core}
  <QAction> <QApplication> <QComboBox> <QDialog> <QEvent> <QLabel> <QLayout> <QLineEdit> <QMenu> <QMouseEvent> <QPainter>
  <QPointer> <QPushButton> <QStyle> <QWidget> <Qsci/qsciscintillabase.h>)
set(QUILLMARK_PRECOMPILED_tests ${QUILLMARK_PRECOMPILED_widgets}
  <QMdiArea> <QSignalSpy> <QTemporaryDir> <QTest> <gtest/gtest.h>)

# A library with no code of its own for each kind, which keeps the parsed headers.
function(quillmark_precompiled_owner kind)
  cmake_parse_arguments(OWNER "" "" "USES;OPTIONS" ${ARGN})
  file(WRITE ${CMAKE_BINARY_DIR}/precompiled/${kind}.cpp "// Holds precompiled headers.\n")
  add_library(precompiled_${kind} OBJECT ${CMAKE_BINARY_DIR}/precompiled/${kind}.cpp)
  set_target_properties(precompiled_${kind} PROPERTIES AUTOMOC OFF)
  target_link_libraries(precompiled_${kind} PRIVATE ${OWNER_USES} quillmark_flags)
  target_compile_options(precompiled_${kind} PRIVATE ${OWNER_OPTIONS})
  target_precompile_headers(precompiled_${kind} PRIVATE ${QUILLMARK_PRECOMPILED_${kind}})
endfunction()

function(quillmark_precompiled target kind)
  target_precompile_headers(${target} REUSE_FROM precompiled_${kind})
endfunction()
