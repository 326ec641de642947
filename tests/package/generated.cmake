# A program whose options are generated while it is built, with the installed command.
file(WRITE ${CMAKE_BINARY_DIR}/rates.def "rate integer 1 2 0 9 1 1 Rate\n")
add_executable(generated generated.cpp)
target_compile_features(generated PRIVATE cxx_std_17)
target_link_libraries(generated PRIVATE optxv::optxv)
optxv_generate(generated ${CMAKE_BINARY_DIR}/rates.def EMBED)
optxv_generate(generated ${CMAKE_BINARY_DIR}/rates.def LANG c PREFIX speed)
