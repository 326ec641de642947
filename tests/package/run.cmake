# Installs the build tree BUILD below a fresh prefix, moves that prefix, and uses the copy from a C
# and a C++ program, found once by find_package and once by pkg-config. Any step that fails ends it.

set(area ${BUILD}/package-test)
set(prefix ${area}/moved)
include(${CMAKE_CURRENT_LIST_DIR}/steps.cmake)
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${area}/installed)
file(RENAME ${area}/installed ${prefix})  # nothing may remember where it was installed

configure(${SOURCE} ${area}/found -DCMAKE_PREFIX_PATH=${prefix})
file(STRINGS ${area}/found/CMakeCache.txt chosen REGEX "^optxv_DIR:")
if(NOT chosen MATCHES "=${prefix}/")
  message(FATAL_ERROR "find_package took another copy: ${chosen}")
endif()
run(${CMAKE_COMMAND} --build ${area}/found)
foreach(program use_c writers)
  run(${area}/found/${program})
endforeach()
configure(${SOURCE} ${area}/plain -DCMAKE_PREFIX_PATH=${prefix} -DONLY_C=ON)
run(${CMAKE_COMMAND} --build ${area}/plain)
run(${area}/plain/use_c)

flags_of(flags --cflags --libs)
set(rpath -Wl,-rpath,${prefix}/${LIBDIR})
run(${CC} ${strict} ${SOURCE}/use.c -o ${area}/use_c ${flags} ${rpath})
run(${CXX} ${strict} -x c++ ${SOURCE}/use.c -x none -o ${area}/use_cpp ${flags} ${rpath})
run(${CXX} -std=c++20 ${strict} ${SOURCE}/writers.cpp -o ${area}/writers ${flags} ${rpath})
foreach(program use_c use_cpp writers)
  run(${area}/${program})
endforeach()

# The example of the manual page is a program.
file(READ ${prefix}/share/man/man3/optxv.3 page)
if(NOT page MATCHES "\n\\.Bd -literal\n(.*)\\.Ed\n")
  message(FATAL_ERROR "the manual page has no example")
endif()
file(WRITE ${area}/example.c "${CMAKE_MATCH_1}")
run(${CC} -std=c99 ${strict} ${area}/example.c -o ${area}/example ${flags} ${rpath})

# Every installed header is found with all that it includes, and so is a host's own folder named like one of ours.
flags_of(folder --variable=includedir)
file(GLOB_RECURSE headers RELATIVE ${folder} ${folder}/optxv/*.h ${folder}/optxv/*.hpp)
list(TRANSFORM headers REPLACE ".+" "#include <\\0>\n")
string(CONCAT text ${headers} "#include <foundation/lists.h>\nint host = hostlists;\n")
file(WRITE ${area}/all.cpp "${text}")
file(WRITE ${area}/host/foundation/lists.h "constexpr int hostlists = 1;\n")
run(${CXX} -std=c++20 ${strict} -fsyntax-only ${area}/all.cpp ${flags} -I${area}/host)

if(HAS_COMMAND)
  run(${area}/found/generated)
  run(${prefix}/bin/optxv --help)  # the command finds its library by itself
  foreach(script bash-completion/completions/optxv zsh/site-functions/_optxv fish/vendor_completions.d/optxv.fish)
    if(NOT EXISTS ${prefix}/share/${script})
      message(FATAL_ERROR "not installed: ${script}")
    endif()
  endforeach()
endif()
