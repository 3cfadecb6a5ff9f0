# Puts a fresh data file into the program folder unless one is there.
if(NOT EXISTS "${TARGET}")
  file(COPY_FILE "${SOURCE}" "${TARGET}")
endif()
