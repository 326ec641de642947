# Installs the build tree BUILD below a fresh prefix, moves that prefix, and uses the copy from a C
# and a C++ program, found once by find_package and once by pkg-config. Any step that fails ends it.

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

set(area ${BUILD}/package-test)
set(prefix ${area}/moved)
file(REMOVE_RECURSE ${area})
file(MAKE_DIRECTORY ${area})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${area}/installed)
file(RENAME ${area}/installed ${prefix})  # nothing may remember where it was installed

run(${CMAKE_COMMAND} -S ${SOURCE} -B ${area}/found -G ${GENERATOR} -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_C_COMPILER=${CC} -DCMAKE_CXX_COMPILER=${CXX})
file(STRINGS ${area}/found/CMakeCache.txt chosen REGEX "^optxv_DIR:")
if(NOT chosen MATCHES "=${prefix}/")
  message(FATAL_ERROR "find_package took another copy: ${chosen}")
endif()
run(${CMAKE_COMMAND} --build ${area}/found)
foreach(program use_c writers)
  run(${area}/found/${program})
endforeach()

find_program(pkg_config NAMES pkg-config pkgconf REQUIRED)
set(ENV{PKG_CONFIG_LIBDIR} ${prefix}/${LIBDIR}/pkgconfig)
set(ENV{LD_LIBRARY_PATH} ${prefix}/${LIBDIR})
run(${pkg_config} --cflags --libs optxv)
separate_arguments(flags UNIX_COMMAND "${output}")
set(strict -Wall -Wextra -Wpedantic -Werror)
run(${CC} ${strict} ${SOURCE}/use.c -o ${area}/use_c ${flags})
run(${CXX} ${strict} -x c++ ${SOURCE}/use.c -x none -o ${area}/use_cpp ${flags})
run(${CXX} -std=c++20 ${strict} ${SOURCE}/writers.cpp -o ${area}/writers ${flags})
foreach(program use_c use_cpp writers)
  run(${area}/${program})
endforeach()

# Every installed header is found with all that it includes, and so is a host's own folder named like one of ours.
run(${pkg_config} --variable=includedir optxv)
file(GLOB_RECURSE headers RELATIVE ${output} ${output}/optxv/*.h)
list(TRANSFORM headers REPLACE ".+" "#include <\\0>\n")
string(CONCAT text ${headers} "#include <foundation/lists.h>\nint host = hostlists;\n")
file(WRITE ${area}/all.cpp "${text}")
file(WRITE ${area}/host/foundation/lists.h "constexpr int hostlists = 1;\n")
run(${CXX} -std=c++20 ${strict} -fsyntax-only ${area}/all.cpp ${flags} -I${area}/host)

if(HAS_COMMAND)
  run(${area}/found/generated)
  unset(ENV{LD_LIBRARY_PATH})  # the command finds its library by itself
  run(${prefix}/bin/optxv --help)
endif()
