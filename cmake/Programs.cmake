# The programs and what is installed with them.

add_executable(quillmark ${CMAKE_SOURCE_DIR}/src/shell/main.cpp)
target_link_libraries(quillmark PRIVATE shell quillmark_flags)
install(TARGETS quillmark RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
