# Puts the delivered files into the program folder of the build tree, and leaves alone what the user
# has changed there: learned codes, edited tables, a rebuilt master file.
#   cmake -DFROM=data -DTO=bin -DLAST=delivered -P deliver.cmake
# LAST keeps the files as they were delivered last; a file in TO that equals them is not the user's.
file(GLOB delivered "${FROM}/*")
foreach(file IN LISTS delivered)
  get_filename_component(name "${file}" NAME)
  if(EXISTS "${TO}/${name}" AND EXISTS "${LAST}/${name}")
    file(SHA256 "${TO}/${name}" there)
    file(SHA256 "${LAST}/${name}" last)
    if(NOT there STREQUAL last)
      continue()
    endif()
  endif()
  file(COPY "${file}" DESTINATION "${TO}")
  file(COPY "${file}" DESTINATION "${LAST}")
endforeach()
