# quillmark-reg, which opens the settings store to a person at a terminal.

add_executable(quillmark-reg
  ${CMAKE_SOURCE_DIR}/src/tools/quillmark-reg/main.cpp
  ${CMAKE_SOURCE_DIR}/src/tools/quillmark-reg/RegistryTool.cpp
  ${CMAKE_SOURCE_DIR}/src/tools/quillmark-reg/RegistryTool.h)
set(doorway ${CMAKE_BINARY_DIR}/rooms/tools)
file(MAKE_DIRECTORY ${doorway})
file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/tools ${doorway}/tools SYMBOLIC)
target_include_directories(quillmark-reg PRIVATE ${doorway})
target_link_libraries(quillmark-reg PRIVATE settings quillmark_flags)
target_compile_definitions(quillmark-reg PRIVATE QUILLMARK_VERSION="${PROJECT_VERSION}")
set_target_properties(quillmark-reg PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
install(TARGETS quillmark-reg RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# Its tests run the built program; their own program is made further below in the top folder.
function(quillmark_reg_tests)
  if(TARGET test_settings)
    add_dependencies(test_settings quillmark-reg)
    target_compile_definitions(test_settings PRIVATE QUILLMARK_REG_PROGRAM="$<TARGET_FILE:quillmark-reg>")
  endif()
endfunction()
cmake_language(DEFER CALL quillmark_reg_tests)
