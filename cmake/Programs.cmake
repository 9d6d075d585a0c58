# The programs, the resources inside them, and what is installed with them.

# Icons are looked up as ":/icons/NAME.svg". An object library, so that nothing has to call for them.
add_library(icons OBJECT ${CMAKE_SOURCE_DIR}/icons/icons.qrc)
target_link_libraries(icons PRIVATE Qt6::Core)

add_executable(quillmark ${CMAKE_SOURCE_DIR}/src/shell/main.cpp)
target_link_libraries(quillmark PRIVATE shell icons quillmark_flags)
set_target_properties(quillmark PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

# What is shipped beside the program stands in the build as it will stand when installed: bin/ and share/quillmark/.
set(QUILLMARK_SHIPPED languages help icons)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/share/quillmark)
foreach(folder ${QUILLMARK_SHIPPED})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${folder} ${CMAKE_BINARY_DIR}/share/quillmark/${folder} SYMBOLIC)
endforeach()

install(TARGETS quillmark RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${QUILLMARK_SHIPPED} DESTINATION ${CMAKE_INSTALL_DATADIR}/quillmark
        PATTERN "*.qrc" EXCLUDE PATTERN ".gitkeep" EXCLUDE)
install(FILES data/Quillmark.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES data/Quillmark.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES data/Quillmark.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES icons/quillmark.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES README.md LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/quillmark)
file(GLOB manual_pages CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/*.1)
install(FILES ${manual_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

include(RegistryTool)
include(RecoverTool)
