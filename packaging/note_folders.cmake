# Run first by `cmake --install`: notes the folders that it is about to make, which the uninstaller then removes.
file(STRINGS "${CMAKE_PARENT_LIST_FILE}" lines REGEX "DESTINATION \"")
foreach(line IN LISTS lines)
  string(REGEX MATCH "DESTINATION \"([^\"]+)\"" destination "${line}")
  string(CONFIGURE "${CMAKE_MATCH_1}" folder) # the prefix is known by now
  while(folder MATCHES "[^/:]$" AND NOT EXISTS "$ENV{DESTDIR}${folder}")
    file(APPEND "${CMAKE_CURRENT_LIST_DIR}/install_folders.txt" "$ENV{DESTDIR}${folder}\n")
    get_filename_component(folder "${folder}" DIRECTORY)
  endwhile()
endforeach()
