# Libraries, headers, the CMake package zelcc (targets zelcc::zelcc, zelcc::zelvideo, each with _static, and zelcc::zelcore) and the
# pkg-config files. The installed tree can be moved as a whole.
include(CMakePackageConfigHelpers)

# Both find their small sibling beside themselves, wherever that is.
set_target_properties(zelcc zelvideo PROPERTIES INSTALL_RPATH $ORIGIN)
install(TARGETS zelcc zelvideo zelcore zelcc_static zelvideo_static zelcore_static EXPORT zelccTargets
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME development)
install(DIRECTORY include/ TYPE INCLUDE FILES_MATCHING PATTERN *.h)
install(FILES zelcore/zelcore.h TYPE INCLUDE)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zelcc)
install(EXPORT zelccTargets NAMESPACE zelcc:: FILE zelccConfig.cmake DESTINATION ${package_dir})
write_basic_package_version_file(zelccConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zelccConfigVersion.cmake DESTINATION ${package_dir})

# Directories as pkg-config writes them: below the prefix, unless they were given as absolute ones.
file(RELATIVE_PATH prefix_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" prefix_from_pc ${prefix_from_pc})
set(pc_libdir "\${prefix}")
set(pc_includedir "\${prefix}")
cmake_path(APPEND pc_libdir ${CMAKE_INSTALL_LIBDIR})
cmake_path(APPEND pc_includedir ${CMAKE_INSTALL_INCLUDEDIR})
foreach(library zelcc zelvideo)
    configure_file(cmake/${library}.pc.in ${library}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
