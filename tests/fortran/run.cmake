# Compiles the Fortran module and its test, with every check of the compiler, and runs the test.
#
# FORTRAN is the compiler, SOURCE the tree, LIBRARY the built library, FOLDER where to build.

file(MAKE_DIRECTORY ${FOLDER})
cmake_path(GET LIBRARY PARENT_PATH library_folder)
# Functions that ask something may be left out of an expression whose result is known.
execute_process(COMMAND ${FORTRAN} -std=f2018 -O1 -g -fcheck=all -Wall -Wextra -Werror -Wno-compare-reals
                        -Wno-function-elimination ${SOURCE}/bindings/fortran/optxv.f90
                        ${SOURCE}/tests/fortran/options_test.f90 -o options_test -L${library_folder} -loptxv
                        -Wl,-rpath,${library_folder}
                WORKING_DIRECTORY ${FOLDER} COMMAND_ERROR_IS_FATAL ANY)
set(ENV{SOLVER_TIME_LIMIT} 77)
execute_process(COMMAND ./options_test ${SOURCE}/examples/solver.def --time-limit=5 model.lp threads=3 --tread=4
                        "--log_file=a b "
                WORKING_DIRECTORY ${FOLDER} COMMAND_ERROR_IS_FATAL ANY)
