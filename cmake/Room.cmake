# quillmark_room(NAME [ABOVE room...] [USES target...])
#
# Makes the static library of one room from src/NAME. Its headers are included as "NAME/Header.h", through a folder that
# holds this room alone, so that a room can include only the rooms it stands above.

function(quillmark_room name)
  cmake_parse_arguments(ROOM "" "" "ABOVE;USES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${name}/*.cpp ${CMAKE_SOURCE_DIR}/src/${name}/*.h)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")

  set(doorway ${CMAKE_BINARY_DIR}/rooms/${name})
  file(MAKE_DIRECTORY ${doorway})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${name} ${doorway}/${name} SYMBOLIC)

  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC ${doorway})
  target_link_libraries(${name} PUBLIC ${ROOM_ABOVE} ${ROOM_USES} PRIVATE quillmark_flags)
endfunction()
