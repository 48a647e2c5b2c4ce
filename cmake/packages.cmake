# Debian packages: `cpack -G DEB` in a build that was configured with -DCMAKE_INSTALL_PREFIX=/usr, which puts the libraries into
# the folder of their architecture and the package for Python where all of Debian's are. libzelcc8 has all libraries, libzelcc-dev
# what programs are built with; zelcc is the program of that name, python3-zelcc the
# package for Python and gstreamer1.0-zelcc the element for GStreamer, where they are built.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/remove_rpaths.cmake)
if(CMAKE_CROSSCOMPILING AND processor STREQUAL aarch64)
    # What looks for an architecture and for dependencies looks at the machine at hand. These are Debian 12's names; the newest
    # functions that are asked of the C library are pow as of 2.29 and, by the program, those of threads as of 2.34.
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS OFF)
    set(runtime_needs "libc6 (>= 2.29)")
    set(tools_needs ", libc6 (>= 2.34), libgcc-s1, libjpeg62-turbo, libpng16-16 (>= 1.6.2), libstdc++6 (>= 12)")
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_PACKAGE_CONTACT "zelCC maintainers <maintainers@zelcc.invalid>")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_CURRENT_BINARY_DIR} ${CMAKE_CURRENT_BINARY_DIR}/video
    ${CMAKE_CURRENT_BINARY_DIR}/zelcore)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(package_files ${CMAKE_CURRENT_BINARY_DIR}/package)
set(package_summary "image colour conversion, exact to the last bit")
set(package_text "Plain C functions that convert images between RGB, luma-chroma at every
subsampling, packed 16-bit pixels, gray and colorimetric spaces, change their
gamma and depth, and reconstruct raw sensor mosaics. Results are defined to the
last bit; the widest vector unit that the processor has is used.")

# What every package has in its folder of documents.
file(WRITE ${package_files}/changelog "zelcc (${PROJECT_VERSION}) unstable; urgency=medium

  * See CHANGELOG.md in the sources.

 -- zelCC maintainers <maintainers@zelcc.invalid>  Wed, 01 Apr 2015 00:00:00 +0000
")
execute_process(COMMAND gzip -9nf ${package_files}/changelog)
file(READ LICENSE licence)
string(REGEX REPLACE "^MIT License\n\n(Copyright [^\n]*)\n\n" "" licence_text "${licence}")
string(REGEX MATCH "Copyright \\(c\\) ([^\n]*)" ignored "${licence}")
set(copyright_holder ${CMAKE_MATCH_1})
string(REGEX REPLACE "\n\n" "\n.\n" licence_text "${licence_text}")
string(REGEX REPLACE "\n([^\n])" "\n \\1" licence_text "\n${licence_text}")
file(WRITE ${package_files}/copyright "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: zelCC

Files: *
Copyright: ${copyright_holder}
License: Expat

License: Expat${licence_text}")

# add_package(COMPONENT NAME SECTION SUMMARY [dependencies])
function(add_package component name section summary)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name} PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS ${ARGN} PARENT_SCOPE)
    set(CPACK_COMPONENT_${upper}_DESCRIPTION "${package_summary} (${summary})\n${package_text}" PARENT_SCOPE)
    install(FILES ${package_files}/copyright ${package_files}/changelog.gz DESTINATION share/doc/${name} COMPONENT ${component}
        EXCLUDE_FROM_ALL)
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${component} PARENT_SCOPE)
endfunction()

add_package(runtime libzelcc8 libs "library" ${runtime_needs})
add_package(development libzelcc-dev libdevel "development files" "libzelcc8 (= ${PROJECT_VERSION})")
if(ZELCC_TOOLS)
    add_package(tools zelcc graphics "converter for files and streams" "libzelcc8 (= ${PROJECT_VERSION})${tools_needs}")
endif()

if(ZELCC_GSTREAMER)
    add_package(gstreamer gstreamer1.0-zelcc libs "element for GStreamer" "libzelcc8 (= ${PROJECT_VERSION})")
endif()

# An extension module is of one minor version of Python and of one binary interface of NumPy, which Debian's NumPy has in a file.
# The scripts write the bytecode and remove it again, as those of Debian's packages do.
set(numpy_file /usr/share/numpy3/versions)
if(ZELCC_PYTHON AND EXISTS ${numpy_file})
    find_package(Python3 REQUIRED COMPONENTS Interpreter)
    math(EXPR next_minor "${Python3_VERSION_MINOR} + 1")
    file(READ ${numpy_file} numpy)
    string(REGEX REPLACE ".*\nabi +([0-9]+).*" "\\1" numpy_abi "${numpy}")
    string(REGEX REPLACE ".*\napi-min-version +([^ \n]+).*" "\\1" numpy_least "${numpy}")
    string(CONCAT needs "libzelcc8 (= ${PROJECT_VERSION}), "
        "python3 (>= 3.${Python3_VERSION_MINOR}~), python3 (<< 3.${next_minor}), "
        "python3-numpy (>= ${numpy_least}), python3-numpy-abi${numpy_abi}")
    add_package(python python3-zelcc python "package for Python 3" "${needs}")
    file(WRITE ${package_files}/postinst "#!/bin/sh\nset -e\n[ \"$1\" != configure ] || py3compile -p python3-zelcc\n")
    file(WRITE ${package_files}/prerm "#!/bin/sh\nset -e\npy3clean -p python3-zelcc\n")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${package_files}/postinst ${package_files}/prerm)
endif()

# Programs that are linked against the library depend on the version that has all their functions.
file(STRINGS src/frame/exports.def exports REGEX "^ZEL_EXPORT")
list(TRANSFORM exports REPLACE "^ZEL_EXPORT\\(([A-Za-z0-9_]+),.*" " \\1@ZELCC_8 ${PROJECT_VERSION}")
file(STRINGS zelcore/zelcore.map core_exports REGEX "^ +zel[A-Za-z]+;")
list(TRANSFORM core_exports REPLACE "^ +([A-Za-z]+);" " \\1@ZELCORE_8 ${PROJECT_VERSION}")
file(STRINGS video/zelvideo.map video_exports REGEX "^ +zelv[A-Za-z]+;")
list(TRANSFORM video_exports REPLACE "^ +([A-Za-z]+);" " \\1@ZELVIDEO_8 ${PROJECT_VERSION}")
list(JOIN exports "\n" exports)
list(JOIN video_exports "\n" video_exports)
list(JOIN core_exports "\n" core_exports)
file(WRITE ${package_files}/symbols "libzelcc.so.8 libzelcc8 #MINVER#
 ZELCC_8@ZELCC_8 ${PROJECT_VERSION}
${exports}
libzelcore.so.8 libzelcc8 #MINVER#
 ZELCORE_8@ZELCORE_8 ${PROJECT_VERSION}
${core_exports}
libzelvideo.so.8 libzelcc8 #MINVER#
 ZELVIDEO_8@ZELVIDEO_8 ${PROJECT_VERSION}
${video_exports}
")
file(WRITE ${package_files}/shlibs "libzelcc 8 libzelcc8 (>= ${PROJECT_VERSION})
libzelcore 8 libzelcc8 (>= ${PROJECT_VERSION})
libzelvideo 8 libzelcc8 (>= ${PROJECT_VERSION})
")
file(WRITE ${package_files}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${package_files}/symbols ${package_files}/shlibs ${package_files}/triggers)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # every package has its own

include(CPack)
