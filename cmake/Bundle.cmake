# The plug-in bundle's place and layout. `VIREONIX_BUNDLE` is its path; the target `bundle_layout` makes its folders and property
# lists. GNUstep looks for an executable and a Resources folder at the bundle's top, so there it gets links to both.
set(VIREONIX_BUNDLE "${CMAKE_BINARY_DIR}/vireonix.bundle")
set(VIREONIX_RESOURCES "${VIREONIX_BUNDLE}/Contents/Resources")
if(VIREONIX_CORE_ONLY)
  return()
endif()

configure_file("${CMAKE_SOURCE_DIR}/Resources/Info.plist.in" "${CMAKE_BINARY_DIR}/Info.plist" @ONLY)
add_custom_command(
  OUTPUT "${VIREONIX_BUNDLE}/Contents/Info.plist"
  COMMAND ${CMAKE_COMMAND} -E make_directory "${VIREONIX_RESOURCES}" "${VIREONIX_BUNDLE}/Contents/MacOS"
  COMMAND ${CMAKE_COMMAND} -E copy "${CMAKE_BINARY_DIR}/Info.plist" "${VIREONIX_BUNDLE}/Contents/Info.plist"
  DEPENDS "${CMAKE_BINARY_DIR}/Info.plist"
  COMMENT "Laying out vireonix.bundle")
set(layoutFiles "${VIREONIX_BUNDLE}/Contents/Info.plist")

if(NOT APPLE)
  configure_file("${CMAKE_SOURCE_DIR}/Resources/Info-gnustep.plist.in" "${CMAKE_BINARY_DIR}/Info-gnustep.plist" @ONLY)
  add_custom_command(
    OUTPUT "${VIREONIX_RESOURCES}/Info-gnustep.plist"
    COMMAND ${CMAKE_COMMAND} -E copy "${CMAKE_BINARY_DIR}/Info-gnustep.plist" "${VIREONIX_RESOURCES}/Info-gnustep.plist"
    COMMAND ${CMAKE_COMMAND} -E create_symlink Contents/Resources "${VIREONIX_BUNDLE}/Resources"
    COMMAND ${CMAKE_COMMAND} -E create_symlink Contents/MacOS/vireonix "${VIREONIX_BUNDLE}/vireonix"
    DEPENDS "${CMAKE_BINARY_DIR}/Info-gnustep.plist" "${VIREONIX_BUNDLE}/Contents/Info.plist")
  list(APPEND layoutFiles "${VIREONIX_RESOURCES}/Info-gnustep.plist")
endif()

add_custom_target(bundle_layout DEPENDS ${layoutFiles})
install(DIRECTORY "${VIREONIX_BUNDLE}" DESTINATION lib/vireonix USE_SOURCE_PERMISSIONS)
