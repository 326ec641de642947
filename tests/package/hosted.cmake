# Takes the tree in as a part of another project, in both ways; builds it there as a static library, and uses that
# library there, by find_package and by pkg-config from where the host installs it.

set(area ${BUILD}/hosted-test)
set(prefix ${area}/moved)
include(${CMAKE_CURRENT_LIST_DIR}/steps.cmake)
set(quick -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0)
if(CCACHE)
  list(APPEND quick -DCMAKE_CXX_COMPILER_LAUNCHER=${CCACHE})
endif()

# The load and unload steps run in a program that holds the library; the second one names no C function of it.
function(try_static folder)
  run(${folder}/use_c)
  expect("early 78, loaded 1\nunloaded 1" ${folder}/lifetime)
  expect("2 arguments" ${folder}/arguments one two)
endfunction()

configure(${SOURCE}/host ${area}/fetched -DOPTXV=${TREE} -DBY=fetch -DTYPE=SHARED_LIBRARY ${quick})
configure(${SOURCE}/host ${area}/added -DOPTXV=${TREE} -DBY=add -DTYPE=STATIC_LIBRARY -DBUILD_SHARED_LIBS=OFF
          -DOPTXV_INSTALL=ON ${quick})
foreach(way fetched added)
  file(STRINGS ${area}/${way}/compile_commands.json strict_lines REGEX "-Werror|-std=[a-z+]*1[147].*/src/")
  if(strict_lines)
    message(FATAL_ERROR "the host's part is compiled by other rules: ${strict_lines}")
  endif()
endforeach()
run(${CMAKE_COMMAND} --build ${area}/added)
try_static(${area}/added)

run(${CMAKE_COMMAND} --install ${area}/added --prefix ${area}/installed)
file(RENAME ${area}/installed ${prefix})
configure(${SOURCE} ${area}/found -DCMAKE_PREFIX_PATH=${prefix} -DSTATIC=ON)
run(${CMAKE_COMMAND} --build ${area}/found)
try_static(${area}/found)
configure(${SOURCE} ${area}/plain -DCMAKE_PREFIX_PATH=${prefix} -DONLY_C=ON)
run(${CMAKE_COMMAND} --build ${area}/plain)
run(${area}/plain/use_c)

flags_of(flags --static --cflags --libs)
file(MAKE_DIRECTORY ${area}/flags)
run(${CC} ${strict} ${SOURCE}/use.c -o ${area}/flags/use_c ${flags})
run(${CXX} -std=c++11 ${strict} ${SOURCE}/lifetime.cpp -o ${area}/flags/lifetime ${flags})
run(${CXX} -std=c++20 ${strict} ${SOURCE}/arguments.cpp -o ${area}/flags/arguments ${flags})
try_static(${area}/flags)
