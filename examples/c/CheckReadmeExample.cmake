# The README quotes the C example in full; the quote must be the file.
file(READ ${EXAMPLE} example)
file(READ ${README} readme)
string(FIND "${readme}" "```c\n${example}```" at)
if(at EQUAL -1)
  message(FATAL_ERROR "README.md does not quote ${EXAMPLE} as it stands")
endif()
