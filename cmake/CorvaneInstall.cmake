# What is installed, and the Debian package of it.

# The solver library is the program's own affair, so it lives in a folder of its own, and the
# program finds it relative to itself: the tree works under any prefix and can be moved as a whole.
set(private_lib_dir "${CMAKE_INSTALL_LIBDIR}/corvane")
file(RELATIVE_PATH bin_to_lib
  "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}/corvane")
set_target_properties(corvane PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
install(TARGETS corvane RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
if(CORVANE_LP_LIBRARY)
  # Somebody else's library stays where it is, and the installed program looks for it there.
  set_target_properties(corvane PROPERTIES INSTALL_RPATH_USE_LINK_PATH ON)
else()
  install(TARGETS corvane_lp LIBRARY DESTINATION "${private_lib_dir}" NAMELINK_SKIP)
endif()

# The time stamp is left out of the compressed page, so that two builds give the same bytes.
add_custom_command(OUTPUT "${PROJECT_BINARY_DIR}/corvane.1.gz"
  COMMAND gzip -9nc "${PROJECT_SOURCE_DIR}/docs/corvane.1" > "${PROJECT_BINARY_DIR}/corvane.1.gz"
  DEPENDS "${PROJECT_SOURCE_DIR}/docs/corvane.1" VERBATIM)
add_custom_target(corvane_manual ALL DEPENDS "${PROJECT_BINARY_DIR}/corvane.1.gz")
install(FILES "${PROJECT_BINARY_DIR}/corvane.1.gz" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")

install(FILES README.md CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(DIRECTORY docs/ DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs" FILES_MATCHING PATTERN "*.md")
install(DIRECTORY samples DESTINATION "${CMAKE_INSTALL_DATADIR}/corvane"
  PATTERN "*.log" EXCLUDE PATTERN "*.imp" EXCLUDE)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "Corvane maintainers <maintainers@corvane.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION
  "Reads a mill's cutters, orders and freight rates, finds good cutting patterns by column
generation, and writes a multi-period network model for a network-planning tool.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
include(CPack)
