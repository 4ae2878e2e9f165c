# What is installed, and the Debian package of it.

# Whatever the umask of who installs or packs, everybody can enter the folders. CMake's own variables
# for that reach only folders that are copied whole, so those that it would create are made first.
install(CODE "
  foreach(folder IN ITEMS ${CMAKE_INSTALL_BINDIR} ${CORVANE_PRIVATE_LIBDIR}
      ${CMAKE_INSTALL_MANDIR}/man1 ${CMAKE_INSTALL_DOCDIR} ${CMAKE_INSTALL_DATADIR}/corvane)
    cmake_path(ABSOLUTE_PATH folder BASE_DIRECTORY \"\${CMAKE_INSTALL_PREFIX}\")
    set(folder \"\$ENV{DESTDIR}\${folder}\")
    set(missing \"\")
    while(NOT EXISTS \"\${folder}\")
      list(PREPEND missing \"\${folder}\")
      cmake_path(GET folder PARENT_PATH folder)
    endwhile()
    foreach(made IN LISTS missing)
      file(MAKE_DIRECTORY \"\${made}\")
      file(CHMOD \"\${made}\" DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
        GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    endforeach()
  endforeach()")

# The programs: each a target of that name, with its manual page docs/<name>.1.
set(installed_programs
  corvane
  corvane-check
  corvane-convert
  corvane-sweep
  corvane-plan
  corvane-report
)

# The solver library is the programs' own affair, so it lives in a folder of its own, and they find
# it relative to themselves: the tree works under any prefix and can be moved as a whole. The build
# folder is laid out in the same way and the path is written once, at link time: a path that CMake
# changes later is padded with empty elements, for which the loader searches the current folder.
if(CORVANE_LP_LIBRARY)
  # Somebody else's library stays where it is, and the programs look for it there.
  get_target_property(lp_library corvane_lp IMPORTED_LOCATION)
  cmake_path(GET lp_library PARENT_PATH lp_folder)
else()
  set(lp_folder "$ORIGIN/${CORVANE_BIN_TO_PRIVATE_LIB}")
  install(TARGETS corvane_lp LIBRARY DESTINATION "${CORVANE_PRIVATE_LIBDIR}" NAMELINK_SKIP)
endif()
set_target_properties(${installed_programs} PROPERTIES
  BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "${lp_folder}")
install(TARGETS ${installed_programs} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")

# The time stamp is left out of a compressed page, so that two builds give the same bytes.
set(manual_pages "")
foreach(program IN LISTS installed_programs)
  set(page "${PROJECT_SOURCE_DIR}/docs/${program}.1")
  set(packed_page "${PROJECT_BINARY_DIR}/${program}.1.gz")
  add_custom_command(OUTPUT "${packed_page}"
    COMMAND gzip -9nc "${page}" > "${packed_page}" DEPENDS "${page}" VERBATIM)
  list(APPEND manual_pages "${packed_page}")
endforeach()
set(debian_changelog "${PROJECT_SOURCE_DIR}/packaging/debian/changelog")
set(packed_changelog "${PROJECT_BINARY_DIR}/changelog.gz")
add_custom_command(OUTPUT "${packed_changelog}"
  COMMAND gzip -9nc "${debian_changelog}" > "${packed_changelog}"
  DEPENDS "${debian_changelog}" VERBATIM)
add_custom_target(corvane_manual ALL DEPENDS ${manual_pages} "${packed_changelog}")
install(FILES ${manual_pages} DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES "${packed_changelog}" packaging/debian/copyright
  DESTINATION "${CMAKE_INSTALL_DOCDIR}")

# Everything that is installed, and none of the tests.
add_custom_target(corvane_installed DEPENDS ${installed_programs} corvane_manual)

install(FILES README.md CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(DIRECTORY docs/ DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs" FILES_MATCHING PATTERN "*.md" PATTERN "*.png")
install(DIRECTORY samples DESTINATION "${CMAKE_INSTALL_DATADIR}/corvane"
  PATTERN "*.log" EXCLUDE PATTERN "*.imp" EXCLUDE)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "Corvane maintainers <maintainers@corvane.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION
  "Reads a mill's cutters, orders and freight rates, finds good cutting
patterns by column generation, and writes a multi-period network model
for a network-planning tool.")
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/package_folders.cmake")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Workbooks and studies, where somebody has any.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "parallel, xlsx2csv")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
  "${PROJECT_BINARY_DIR}/${CORVANE_PRIVATE_LIBDIR}")
include(CPack)
