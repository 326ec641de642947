# What tests/api needs besides its test files: callers that check the public headers in the languages they
# promise, and a test that sees the library loaded and unloaded.

function(optxv_header_test name source)
  add_executable(${name} ${PROJECT_SOURCE_DIR}/tests/api/${source})
  target_link_libraries(${name} PRIVATE optxv)
  target_compile_options(${name} PRIVATE -Wall -Wextra -Wpedantic -Werror)
  add_test(NAME ${name} COMMAND ${name} ${PROJECT_BINARY_DIR}/${name}.def)
  set_tests_properties(${name} PROPERTIES LABELS unit TIMEOUT 120)
endfunction()

optxv_header_test(embeddingheader_c embeddingheader.c)
# Linked by the C++ compiler, which has all of a sanitizer's runtime where the library needs one.
set_target_properties(embeddingheader_c PROPERTIES C_STANDARD 99 C_STANDARD_REQUIRED ON C_EXTENSIONS OFF LINKER_LANGUAGE CXX)
optxv_header_test(embeddingheader_cpp embeddingheader.cpp)
set_target_properties(embeddingheader_cpp PROPERTIES CXX_STANDARD 11)
optxv_header_test(hppheader hppheader.cpp)
set_target_properties(hppheader PROPERTIES CXX_STANDARD 17)
target_compile_options(hppheader PRIVATE -Wshadow -Wconversion)
if(NOT optxv_sanitizers)
  target_compile_options(hppheader PRIVATE -fno-rtti)  # sanitizers need the types of objects
endif()

# It names no symbol of the library, so this keeps the library from being loaded with it.
target_link_options(loading_test PRIVATE LINKER:--as-needed)

# Two C programs of one source, which say what the library knows of them, and where the test finds them.
function(optxv_host_program name)
  add_executable(${name} ${PROJECT_SOURCE_DIR}/tests/api/hostarguments.c)
  target_link_libraries(${name} PRIVATE ${CMAKE_DL_LIBS})
  target_compile_options(${name} PRIVATE -Wall -Wextra -Werror)
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
  add_dependencies(hostarguments_test ${name} optxv)
endfunction()

optxv_host_program(host_linked)
target_link_libraries(host_linked PRIVATE optxv)
optxv_host_program(host_loading)
target_compile_definitions(host_loading PRIVATE OPTXV_LOADED_FILE="$<TARGET_FILE:optxv>")
target_compile_definitions(hostarguments_test PRIVATE OPTXV_LINKED_PROGRAM="$<TARGET_FILE:host_linked>"
                                                      OPTXV_LOADING_PROGRAM="$<TARGET_FILE:host_loading>")
# A program without a sanitizer's runtime cannot load a library that is built with one.
if(NOT optxv_sanitizers)
  target_compile_definitions(hostarguments_test PRIVATE OPTXV_PYTHON="$<TARGET_FILE:Python3::Interpreter>")
endif()
