# Run by CPack on its staging tree just before it builds the package: Debian
# keeps manual pages compressed, with gzip -9n so that the file holds neither
# the page's name nor a time stamp. `cmake --install` leaves them as they are.
file(GLOB_RECURSE pages "${CPACK_TEMPORARY_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX}/share/man/*")
foreach(page IN LISTS pages)
    if(NOT page MATCHES "\\.gz$")
        execute_process(COMMAND gzip -9n "${page}" RESULT_VARIABLE status)
        if(NOT status EQUAL 0)
            message(FATAL_ERROR "cannot compress ${page}")
        endif()
    endif()
endforeach()
