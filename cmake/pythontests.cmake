# The Python package: its tests by pytest, its types by mypy, its wheel. Where a tool is not installed, the test that
# needs it is skipped.

set(optxv_python_path ${PROJECT_SOURCE_DIR}/bindings/python/src)

# optxv_python_test(name labels program...): runs in the tree, with the package and the built library.
function(optxv_python_test name labels)
  add_test(NAME ${name} COMMAND ${CMAKE_COMMAND} -E env PYTHONPATH=${optxv_python_path} PYTHONDONTWRITEBYTECODE=1
           OPTXV_LIBRARY=$<TARGET_FILE:optxv> CC=${CMAKE_C_COMPILER} ${optxv_reader_python} ${ARGN}
           WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  set_tests_properties(${name} PROPERTIES LABELS "${labels}" TIMEOUT 300 SKIP_RETURN_CODE 77)
endfunction()

# A program without a sanitizer's runtime cannot load a library that is built with one.
if(NOT optxv_sanitizers)
  optxv_python_test(python document tests/python/run.py pytest -q -p no:cacheprovider tests/python)
  optxv_python_test(python_types python-package tests/python/run.py mypy --config-file bindings/python/pyproject.toml
                    --cache-dir ${PROJECT_BINARY_DIR}/mypy bindings/python/src/optxv)
  optxv_python_test(python_wheel python-package tests/python/wheel.py)
endif()
