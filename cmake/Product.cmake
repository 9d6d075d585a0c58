# What the About box and the commands of the Help menu show and open, beside the version of the project. Whoever builds the
# program for others, and answers for it, sets these: -DQUILLMARK_WEB_ADDRESS=...

set(QUILLMARK_WEB_ADDRESS "https://quillmark.org/" CACHE STRING "Web address of the product")
set(QUILLMARK_MAIL_ADDRESS "developers@quillmark.org" CACHE STRING "Mail address of those who answer questions about it")
set(QUILLMARK_BUILD_NUMBER "" CACHE STRING "Number of the build; empty: the number of commits, or 0 without git")

# quillmark_product(SOURCE): compile the source with these as macros.
function(quillmark_product source)
  set(build "${QUILLMARK_BUILD_NUMBER}")
  if(build STREQUAL "")
    execute_process(COMMAND git -C ${CMAKE_SOURCE_DIR} rev-list --count HEAD
      OUTPUT_VARIABLE build OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failed)
    if(failed)
      set(build 0)
    endif()
  endif()
  set_source_files_properties(${source} PROPERTIES SKIP_PRECOMPILE_HEADERS ON COMPILE_DEFINITIONS
    "QUILLMARK_VERSION=\"${PROJECT_VERSION}\";QUILLMARK_BUILD_NUMBER=\"${build}\";QUILLMARK_WEB_ADDRESS=\"${QUILLMARK_WEB_ADDRESS}\";QUILLMARK_MAIL_ADDRESS=\"${QUILLMARK_MAIL_ADDRESS}\"")
endfunction()
