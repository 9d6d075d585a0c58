# quillmark-recover, which opens records of interrupted saves and journals to a person at a terminal.

add_executable(quillmark-recover
  ${CMAKE_SOURCE_DIR}/src/tools/quillmark-recover/main.cpp
  ${CMAKE_SOURCE_DIR}/src/tools/quillmark-recover/RecoverTool.cpp
  ${CMAKE_SOURCE_DIR}/src/tools/quillmark-recover/RecoverTool.h
  ${CMAKE_SOURCE_DIR}/src/tools/quillmark-recover/JournalTool.cpp
  ${CMAKE_SOURCE_DIR}/src/tools/quillmark-recover/JournalTool.h
  ${CMAKE_SOURCE_DIR}/src/tools/quillmark-recover/ToolOutput.cpp
  ${CMAKE_SOURCE_DIR}/src/tools/quillmark-recover/ToolOutput.h)
target_include_directories(quillmark-recover PRIVATE ${CMAKE_BINARY_DIR}/rooms/tools)
target_link_libraries(quillmark-recover PRIVATE recovery quillmark_flags)
target_compile_definitions(quillmark-recover PRIVATE QUILLMARK_VERSION="${PROJECT_VERSION}")
set_target_properties(quillmark-recover PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
install(TARGETS quillmark-recover RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# Its tests run the built program; their own program is made further below in the top folder.
function(quillmark_recover_tests)
  if(TARGET test_recovery)
    add_dependencies(test_recovery quillmark-recover)
    target_compile_definitions(test_recovery PRIVATE QUILLMARK_RECOVER_PROGRAM="$<TARGET_FILE:quillmark-recover>")
  endif()
endfunction()
cmake_language(DEFER CALL quillmark_recover_tests)
