# Code for the options of a definition, made while a target is built. Part of the installed package, and of the build
# tree of the library.
#
#   optxv_generate(TARGET DEFINITION [LANG language] [PREFIX name] [EMBED])
#
# TARGET      a target that is there already; it gets the folder of the code as an include folder, and in Fortran and
#             Pascal nothing more than that the file is made before it. The program links the library itself.
# DEFINITION  the file, from the folder of the calling CMakeLists.txt. The code is made anew when it changes.
# LANG        c, c++ (which is what it is without it), python, fortran or pascal
# PREFIX      of the names; that of the definition's file without it
# EMBED       puts the definition's text into the code, with a function that reads it
#
# The file is called <prefix>_options, with .h, .hpp, .py, .f90 or .pas; in Fortran it becomes a source of the target.

function(optxv_generate target definition)
  cmake_parse_arguments(PARSE_ARGV 2 arg "EMBED" "LANG;PREFIX" "")
  if(NOT TARGET ${target})
    message(FATAL_ERROR "optxv_generate: there is no target ${target}")
  endif()
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "optxv_generate: what is ${arg_UNPARSED_ARGUMENTS}?")
  endif()
  if(NOT TARGET optxv::command)
    message(FATAL_ERROR "optxv_generate: the command optxv is not part of this copy of the library")
  endif()
  if(NOT arg_LANG)
    set(arg_LANG c++)
  endif()
  cmake_path(ABSOLUTE_PATH definition BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
  if(NOT arg_PREFIX)
    cmake_path(GET definition STEM arg_PREFIX)
  endif()

  set(languages c c++ python fortran pascal)
  set(endings h hpp py f90 pas)
  list(FIND languages "${arg_LANG}" position)
  if(position EQUAL -1)
    message(FATAL_ERROR "optxv_generate: there is no language ${arg_LANG}; there are ${languages}")
  endif()
  list(GET endings ${position} ending)

  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}_options)
  set(file ${folder}/${arg_PREFIX}_options.${ending})
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(OUTPUT ${file}
    COMMAND optxv::command generate ${definition} --lang ${arg_LANG} --prefix ${arg_PREFIX}
            "$<$<BOOL:${arg_EMBED}>:--embed>" -o ${file}
    DEPENDS ${definition} optxv::command
    COMMENT "The options of ${arg_PREFIX} as ${arg_LANG}" VERBATIM COMMAND_EXPAND_LISTS)
  target_sources(${target} PRIVATE ${file})
  target_include_directories(${target} PRIVATE ${folder})
endfunction()
