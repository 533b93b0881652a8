# The install tree: libraries, public headers, the packages for CMake and pkg-config, and the tool.
# It may be moved: nothing in it knows its prefix, as long as the install folders are relative.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/FileFormatsVantero")

# Both libraries stand in one folder; the tool finds them from its own. Distributions that want no
# run path configure with CMAKE_SKIP_INSTALL_RPATH.
set_target_properties(FileFormatsVantero PROPERTIES INSTALL_RPATH "$ORIGIN")

install(TARGETS FileFormatsVantero VanteroBase EXPORT FileFormatsVanteroTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    COMPONENT FileFormatsVantero_Runtime
    NAMELINK_COMPONENT FileFormatsVantero_Development)

get_property(public_headers GLOBAL PROPERTY VANTERO_PUBLIC_HEADERS)
foreach(header IN LISTS public_headers)
  file(RELATIVE_PATH relative "${PROJECT_SOURCE_DIR}" "${header}")
  get_filename_component(folder "${relative}" DIRECTORY)
  install(FILES "${header}"
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/FileFormatsVantero/${folder}"
    COMPONENT FileFormatsVantero_Development)
endforeach()

# ---- CMake ---------------------------------------------------------------------------------------

install(EXPORT FileFormatsVanteroTargets
  NAMESPACE Vantero::
  DESTINATION "${package_dir}"
  COMPONENT FileFormatsVantero_Development)

configure_package_config_file(
  "${CMAKE_CURRENT_LIST_DIR}/FileFormatsVanteroConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/FileFormatsVanteroConfig.cmake"
  INSTALL_DESTINATION "${package_dir}"
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/FileFormatsVanteroConfigVersion.cmake"
  VERSION "${PROJECT_VERSION}"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/FileFormatsVanteroConfig.cmake"
  "${PROJECT_BINARY_DIR}/FileFormatsVanteroConfigVersion.cmake"
  DESTINATION "${package_dir}"
  COMPONENT FileFormatsVantero_Development)

# The tool has an export set of its own, so that a package of the libraries alone still loads.
if(TARGET vantero-formats)
  file(RELATIVE_PATH bin_to_lib
    "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
  set_target_properties(vantero-formats PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
  install(TARGETS vantero-formats EXPORT FileFormatsVanteroToolTargets
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
      COMPONENT FileFormatsVantero_Tool)
  install(EXPORT FileFormatsVanteroToolTargets
    NAMESPACE Vantero::
    DESTINATION "${package_dir}"
    COMPONENT FileFormatsVantero_Tool)

  install(FILES "${PROJECT_SOURCE_DIR}/docs/man/vantero-formats.1"
    DESTINATION "${CMAKE_INSTALL_MANDIR}/man1"
    COMPONENT FileFormatsVantero_Tool)
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs/schemas"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/vantero-formats"
    COMPONENT FileFormatsVantero_Tool
    FILES_MATCHING PATTERN "*.json")
  set(completions "${PROJECT_SOURCE_DIR}/tool/completions")
  install(FILES "${completions}/vantero-formats.bash"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions"
    RENAME vantero-formats
    COMPONENT FileFormatsVantero_Tool)
  install(FILES "${completions}/_vantero-formats"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions"
    COMPONENT FileFormatsVantero_Tool)
  install(FILES "${completions}/vantero-formats.fish"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d"
    COMPONENT FileFormatsVantero_Tool)
endif()

# ---- pkg-config ----------------------------------------------------------------------------------

# An absolute install folder stands as it is; a relative one is found from where the file lies.
set(pc_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(pc_prefix "${CMAKE_INSTALL_PREFIX}")
else()
  file(RELATIVE_PATH pc_to_prefix "/${pc_dir}" "/")
  string(REGEX REPLACE "/$" "" pc_to_prefix "${pc_to_prefix}")
  set(pc_prefix "\${pcfiledir}/${pc_to_prefix}")
endif()
foreach(folder IN ITEMS LIBDIR INCLUDEDIR)
  string(TOLOWER "pc_${folder}" variable)
  if(IS_ABSOLUTE "${CMAKE_INSTALL_${folder}}")
    set(${variable} "${CMAKE_INSTALL_${folder}}")
  else()
    set(${variable} "\${prefix}/${CMAKE_INSTALL_${folder}}")
  endif()
endforeach()
configure_file(
  "${CMAKE_CURRENT_LIST_DIR}/FileFormatsVantero.pc.in"
  "${PROJECT_BINARY_DIR}/FileFormatsVantero.pc"
  @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/FileFormatsVantero.pc"
  DESTINATION "${pc_dir}"
  COMPONENT FileFormatsVantero_Development)
