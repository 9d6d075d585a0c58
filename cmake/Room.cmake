# quillmark_room(NAME [USES target...])
#
# Makes the static library of one room from src/NAME and its sub-folders. Its headers are included by their path below src/
# ("NAME/folder/Header.h"), through a folder that holds this room alone; src/rooms.txt says which other rooms it sees, and
# an include of any other does not build. The order of the sub-folders is kept by scripts/check-rooms.

set(QUILLMARK_ROOM_TABLE ${CMAKE_SOURCE_DIR}/src/rooms.txt)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${QUILLMARK_ROOM_TABLE})

# The rooms below NAME that are built, in OUT.
function(quillmark_rooms_below name out)
  file(STRINGS ${QUILLMARK_ROOM_TABLE} line REGEX "^${name}:")
  if(NOT line)
    message(FATAL_ERROR "${QUILLMARK_ROOM_TABLE} has no room ${name}")
  endif()
  string(REGEX REPLACE "^[^:]*:" "" below "${line}")
  string(REGEX REPLACE "/[a-z]+" "" below "${below}")
  string(REGEX MATCHALL "[a-z]+" below "${below}")
  list(REMOVE_DUPLICATES below)
  set(built)
  foreach(room ${below})
    if(TARGET ${room})
      list(APPEND built ${room})
    endif()
  endforeach()
  set(${out} ${built} PARENT_SCOPE)
endfunction()

function(quillmark_room name)
  cmake_parse_arguments(ROOM "" "" "USES" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${name}/*.cpp ${CMAKE_SOURCE_DIR}/src/${name}/*.h)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")

  set(doorway ${CMAKE_BINARY_DIR}/rooms/${name})
  file(MAKE_DIRECTORY ${doorway})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${name} ${doorway}/${name} SYMBOLIC)

  quillmark_rooms_below(${name} below)
  if(NOT sources)
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${doorway})
    target_link_libraries(${name} INTERFACE ${below} ${ROOM_USES})
    return()
  endif()
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC ${doorway})
  target_link_libraries(${name} PUBLIC ${below} ${ROOM_USES} PRIVATE quillmark_flags)
  if(Qt6::Widgets IN_LIST ROOM_USES)
    quillmark_precompiled(${name} widgets)
  else()
    quillmark_precompiled(${name} core)
  endif()
endfunction()
