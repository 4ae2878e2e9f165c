# corvane_lp as the library file that CORVANE_LP_LIBRARY names, whatever its name: a program linked
# with it finds it again when run from the build tree.
if(NOT EXISTS "${CORVANE_LP_LIBRARY}" OR IS_DIRECTORY "${CORVANE_LP_LIBRARY}")
  message(FATAL_ERROR "CORVANE_LP_LIBRARY: there is no library file '${CORVANE_LP_LIBRARY}'")
endif()

execute_process(COMMAND "${CMAKE_OBJDUMP}" -p "${CORVANE_LP_LIBRARY}"
  OUTPUT_VARIABLE dynamic_section RESULT_VARIABLE objdump_result)
if(NOT objdump_result EQUAL 0)
  message(FATAL_ERROR "CORVANE_LP_LIBRARY: '${CORVANE_LP_LIBRARY}' is not a shared library")
endif()
string(REGEX MATCH "SONAME +([^\n]+)" soname_line "${dynamic_section}")
set(soname "${CMAKE_MATCH_1}")
get_filename_component(folder "${CORVANE_LP_LIBRARY}" DIRECTORY)
get_filename_component(file_name "${CORVANE_LP_LIBRARY}" NAME)

add_library(corvane_lp SHARED IMPORTED GLOBAL)
set_target_properties(corvane_lp PROPERTIES
  IMPORTED_LOCATION "${CORVANE_LP_LIBRARY}" INTERFACE_LINK_LIBRARIES corvane_solver_interface)

# The loader looks for the SONAME, or for the name that the linker saw where there is none. The file
# answers to it where it lies, or else through a link in the build tree.
if(soname_line STREQUAL "")
  set(link_name libcorvane_lp.so)
  set_target_properties(corvane_lp PROPERTIES IMPORTED_NO_SONAME TRUE)
else()
  set(link_name "${soname}")
  set_target_properties(corvane_lp PROPERTIES IMPORTED_SONAME "${soname}")
endif()
file(REAL_PATH "${CORVANE_LP_LIBRARY}" real_library)
file(REAL_PATH "${folder}/${link_name}" real_namesake)
if(NOT real_library STREQUAL real_namesake)
  set(link_folder "${PROJECT_BINARY_DIR}/lp_library")
  file(REMOVE_RECURSE "${link_folder}")
  file(MAKE_DIRECTORY "${link_folder}")
  file(CREATE_LINK "${CORVANE_LP_LIBRARY}" "${link_folder}/${link_name}" SYMBOLIC)
  set_target_properties(corvane_lp PROPERTIES IMPORTED_LOCATION "${link_folder}/${link_name}")
endif()
