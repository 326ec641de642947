# The Fortran module, compiled by gfortran and run. Where gfortran is not installed, there is no such test.

find_program(optxv_fortran gfortran)
if(optxv_fortran AND NOT optxv_sanitizers)
  add_test(NAME fortran COMMAND ${CMAKE_COMMAND} -DFORTRAN=${optxv_fortran} -DSOURCE=${PROJECT_SOURCE_DIR}
           -DLIBRARY=$<TARGET_FILE:optxv> -DFOLDER=${PROJECT_BINARY_DIR}/fortran
           -P ${PROJECT_SOURCE_DIR}/tests/fortran/run.cmake)
  set_tests_properties(fortran PROPERTIES LABELS document TIMEOUT 120)
elseif(NOT optxv_fortran)
  message(STATUS "no gfortran: the Fortran module is not tested")
endif()
