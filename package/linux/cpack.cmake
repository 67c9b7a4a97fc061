# CPack reads this for each package that it makes. The .zip is the bundle for 3ds Max; these are the
# programs for Linux.
if(CPACK_GENERATOR MATCHES "^(DEB|TGZ)$")
    list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 build_folder)
    set(CPACK_INSTALL_CMAKE_PROJECTS "${build_folder};VSQExport;programs;/")
    set(CPACK_STRIP_FILES ON)
    set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
    set(CPACK_PACKAGE_FILE_NAME VSQExport-${CPACK_PACKAGE_VERSION}-Linux-${CPACK_SYSTEM_PROCESSOR})
endif()
if(CPACK_GENERATOR STREQUAL DEB)
    set(CPACK_DEBIAN_PACKAGE_NAME vsqexport)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Quoria <vsqexport@quoria.example>")
    set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
    set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
        "Exports model files to scene files of the Velmora renderer\n\
Without 3ds Max, the plug-in VSQExport runs in a stand-in host. With it come\n\
a reader and checker of scene files, a program that draws them, and a\n\
stand-in for the renderer.")
    # The libraries are found by what the programs link; python3 runs the script of an animation.
    set(CPACK_DEBIAN_PACKAGE_DEPENDS python3)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${build_folder}/bin)
endif()
