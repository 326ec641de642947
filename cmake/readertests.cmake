# What other programs make of the documents of the command: a browser, a Pascal compiler; and of its scripts: shells.
# Where they are not installed, the tests are skipped.

# The system's packages install their modules for its own interpreter, which need not be the first on the
# path.
find_program(optxv_reader_python python3 PATHS /usr/bin NO_DEFAULT_PATH)
if(NOT optxv_reader_python)
  set(optxv_reader_python ${Python3_EXECUTABLE})
endif()

function(optxv_reader_test name labels file)
  add_test(NAME ${name} COMMAND ${optxv_reader_python} -B ${file} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  set_tests_properties(${name} PROPERTIES LABELS ${labels} TIMEOUT 300 SKIP_RETURN_CODE 77 ENVIRONMENT
    "PYTHONPATH=${PROJECT_SOURCE_DIR}/bindings/python/src;OPTXV_LIBRARY=$<TARGET_FILE:optxv>;OPTXV_COMMAND=$<TARGET_FILE:optxv_command>;OPTXV_INCLUDE=${PROJECT_SOURCE_DIR}/include")
endfunction()

# A program without a sanitizer's runtime cannot load a library that is built with one.
if(TARGET optxv_command AND NOT optxv_sanitizers)
  optxv_reader_test(browser documents-readers tests/browser/pages_test.py)
  optxv_reader_test(pascal documents-readers tests/pascal/include_test.py)
  optxv_reader_test(generate documents-readers tests/generate/generate_test.py)
  optxv_reader_test(shells shells tests/shells/completion_test.py)
  optxv_reader_test(validators documents-readers tests/schema/validators_test.py)
  set_property(TEST validators APPEND PROPERTY ENVIRONMENT "OPTXV_AJV=${PROJECT_BINARY_DIR}/ajv")
  optxv_reader_test(editors editors tests/editors/editors_test.py)
  set_property(TEST editors APPEND PROPERTY ENVIRONMENT "OPTXV_NPM=${PROJECT_BINARY_DIR}/npm")
endif()
