# Run by CPack before it makes the package of what has been installed: does what only Debian asks for.
set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)

foreach(font DejaVuSans.ttf DejaVuSans-Bold.ttf)
  file(CREATE_LINK ../../../../../fonts/truetype/dejavu/${font}
       ${share}/quillmere/examples/aurora/theme/font/${font} SYMBOLIC)
endforeach()

# No time of day goes into them, so that the same sources give the same files.
execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/changelog.sh ${CMAKE_CURRENT_LIST_DIR}/../CHANGELOG.md
                OUTPUT_FILE ${share}/doc/quillmere/changelog COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND gzip -9n ${share}/doc/quillmere/changelog ${share}/man/man1/quillmere.1
                COMMAND_ERROR_IS_FATAL ANY)
