# The classes for programs in C++: each header of src/ that marks something such a program may link to
# (OPTXV_EXPORT), and what these include. Their copies stand in the build folder below optxv/, and include one
# another from there: an installed copy takes one include folder, and stands in the way of no host's headers.

set(class_headers_folder ${PROJECT_BINARY_DIR}/classheaders)

# Every header that one of the given ones leads to, these too.
function(optxv_header_closure result)
  set(waiting ${ARGN})
  set(found)
  while(waiting)
    list(POP_FRONT waiting header)
    if(NOT header IN_LIST found)
      list(APPEND found ${header})
      file(STRINGS src/${header} lines REGEX "^#include \"")
      list(FILTER lines EXCLUDE REGEX "\"optxv/")  # the public headers stand there as they are
      list(TRANSFORM lines REPLACE "^#include \"([^\"]+)\".*" "\\1")
      list(APPEND waiting ${lines})
    endif()
  endwhile()
  set(${result} ${found} PARENT_SCOPE)
endfunction()

function(optxv_copy_header header)
  file(READ src/${header} text)
  string(REGEX REPLACE "(^|\n)#include \"" "\\1#include \"optxv/" text "${text}")
  string(REPLACE "\"optxv/optxv/" "\"optxv/" text "${text}")
  file(CONFIGURE OUTPUT ${class_headers_folder}/optxv/${header} CONTENT "${text}" @ONLY NEWLINE_STYLE UNIX)
endfunction()

file(GLOB headers RELATIVE ${PROJECT_SOURCE_DIR}/src CONFIGURE_DEPENDS src/*/*.h)
set(marked_headers foundation/zmaobj.h)  # gathers three that do
foreach(header ${headers})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS src/${header})
  file(STRINGS src/${header} marks REGEX "^[^#/]*OPTXV_EXPORT")
  if(marks)
    list(APPEND marked_headers ${header})
  endif()
endforeach()
optxv_header_closure(class_headers ${marked_headers})
foreach(header ${class_headers})
  optxv_copy_header(${header})
endforeach()
file(GLOB_RECURSE copies RELATIVE ${class_headers_folder}/optxv ${class_headers_folder}/optxv/*.h)
foreach(header ${copies})
  if(NOT header IN_LIST class_headers)  # a copy from before
    file(REMOVE ${class_headers_folder}/optxv/${header})
  endif()
endforeach()
target_include_directories(optxv INTERFACE $<BUILD_INTERFACE:${class_headers_folder}>)
