# The examples and the documents, run from outside through the built library, the command and the installed copy.

set(documents ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/examples/minimizer/README.md
    ${PROJECT_SOURCE_DIR}/bindings/python/README.md)
file(GLOB more_documents CONFIGURE_DEPENDS docs/*.md)
list(APPEND documents ${more_documents})

function(optxv_document_test name)
  add_test(NAME ${name} COMMAND ${CMAKE_COMMAND} -E env OPTXV_SOURCE=${PROJECT_SOURCE_DIR}
           PYTHONPATH=${PROJECT_SOURCE_DIR}/bindings/python/src
           OPTXV_LIBRARY=$<TARGET_FILE:optxv> CC=${CMAKE_C_COMPILER} CXX=${CMAKE_CXX_COMPILER}
           FC=$<$<BOOL:${optxv_fortran}>:${optxv_fortran}>
           $<$<TARGET_EXISTS:optxv_command>:OPTXV_COMMAND=$<TARGET_FILE:optxv_command>>
           $<$<TARGET_EXISTS:minimizer>:OPTXV_MINIMIZER=$<TARGET_FILE:minimizer>>
           $<$<TARGET_EXISTS:solver>:OPTXV_SOLVER=$<TARGET_FILE:solver>>
           $<TARGET_FILE:Python3::Interpreter> -B ${ARGN}
           COMMAND_EXPAND_LISTS WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  set_tests_properties(${name} PROPERTIES LABELS document TIMEOUT 300)
endfunction()

# A program without a sanitizer's runtime cannot load a library that is built with one.
if(NOT optxv_sanitizers)
  optxv_document_test(documents tests/docs/documents.py ${documents})
  optxv_document_test(examples tests/docs/examples_test.py)
  optxv_document_test(documents_checks tests/docs/documents_test.py)
endif()
