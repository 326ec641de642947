# What the scripts of this folder do step by step: run() ends the script where a program fails.

function(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${area} RESULT_VARIABLE status
                  OUTPUT_VARIABLE output ERROR_VARIABLE output
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  message(STATUS "${ARGN}\n${output}")
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "failed (${status}): ${ARGN}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

# expect(<text> <program> [argument...]): runs a program that has to print just that.
function(expect text)
  run(${ARGN})
  if(NOT output STREQUAL text)
    message(FATAL_ERROR "printed '${output}', not '${text}': ${ARGN}")
  endif()
endfunction()

# flags_of(<result> [argument...]): what pkg-config says of the copy below ${prefix}.
function(flags_of result)
  find_program(pkg_config NAMES pkg-config pkgconf REQUIRED)
  set(ENV{PKG_CONFIG_LIBDIR} ${prefix}/${LIBDIR}/pkgconfig)
  run(${pkg_config} ${ARGN} optxv)
  separate_arguments(flags UNIX_COMMAND "${output}")
  set(${result} ${flags} PARENT_SCOPE)
endfunction()

# configure(<source> <build folder> [argument...]): with the generator and the compilers of the build under test.
function(configure source folder)
  run(${CMAKE_COMMAND} -S ${source} -B ${folder} -G ${GENERATOR} -DCMAKE_C_COMPILER=${CC} -DCMAKE_CXX_COMPILER=${CXX}
      ${ARGN})
endfunction()

set(strict -Wall -Wextra -Wpedantic -Werror)
file(REMOVE_RECURSE ${area})
file(MAKE_DIRECTORY ${area})
