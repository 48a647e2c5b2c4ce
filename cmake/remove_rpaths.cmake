# What is installed into the system's own folders needs no path to its libraries.
file(GLOB_RECURSE programs LIST_DIRECTORIES false ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/lib/*.so*
    ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/bin/* ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/lib/*.so*
    ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/bin/*)
foreach(program ${programs})
    if(NOT IS_SYMLINK ${program})
        file(RPATH_REMOVE FILE ${program})
    endif()
endforeach()
