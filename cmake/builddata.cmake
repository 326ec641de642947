# What the audit record says of a build, passed to the one source that keeps it. Everything here follows from
# the commit and the target, so that two builds of one commit are the same bytes.
#
# The date is SOURCE_DATE_EPOCH where that is set (https://reproducible-builds.org/docs/source-date-epoch), else the
# time of the commit that was configured, which git writes into committime.txt when it makes an archive of the tree;
# else, in a tree without history, a fixed day of the project.

set(build_epoch 1767225600)
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/committime.txt archived_time)
if("$ENV{SOURCE_DATE_EPOCH}" MATCHES "^[0-9]+$")
  set(build_epoch "$ENV{SOURCE_DATE_EPOCH}")
elseif(archived_time MATCHES "^[0-9]+$")
  set(build_epoch ${archived_time})
elseif(EXISTS ${PROJECT_SOURCE_DIR}/.git)
  find_program(git_program git)
  if(git_program)
    execute_process(COMMAND ${git_program} -C ${PROJECT_SOURCE_DIR} log -1 --format=%ct
                    OUTPUT_VARIABLE commit_time OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(commit_time MATCHES "^[0-9]+$")
      set(build_epoch ${commit_time})
    endif()
  endif()
endif()

# Three letters for the system, three for the processor and the system together.
set(build_platform_code "GEN")
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  set(build_platform_code "LNX")
endif()
set(build_code "GEN")
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$")
  set(build_code "X64")
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
  set(build_code "A64")
endif()

set_source_files_properties(${PROJECT_SOURCE_DIR}/src/foundation/zdlaudit.cpp PROPERTIES COMPILE_DEFINITIONS
  "OPTXV_BUILD_EPOCH=${build_epoch};OPTXV_BUILD_MAJOR=\"${PROJECT_VERSION_MAJOR}\";\
OPTXV_BUILD_MINOR=\"${PROJECT_VERSION_MINOR}\";OPTXV_BUILD_MAINTENANCE=\"${PROJECT_VERSION_PATCH}\";\
OPTXV_BUILD_PLATFORM_CODE=\"${build_platform_code}\";OPTXV_BUILD_CODE=\"${build_code}\";\
OPTXV_BUILD_PLATFORM_TEXT=\"${CMAKE_SYSTEM_PROCESSOR}/${CMAKE_SYSTEM_NAME}\"")

# A path of the machine that builds is no part of what is built.
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
