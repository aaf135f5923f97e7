# Makes a manual page: in SOURCE, @OPTIONS@ becomes the options that PROGRAM --help lists; of a program
# with commands, each command's usage, description and options.

function(read_help variable)
  execute_process(COMMAND ${PROGRAM} ${ARGN} --help OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  set(${variable} "${text}" PARENT_SCOPE)
endfunction()

# Text in which nothing is taken for a request or an escape.
function(escape variable)
  string(REPLACE "\\" "\\e" text "${${variable}}")
  string(REPLACE "-" "\\-" text "${text}")
  string(REGEX REPLACE "(^|\n)([.'])" "\\1\\\\&\\2" text "${text}")
  set(${variable} "${text}" PARENT_SCOPE)
endfunction()

# The help's list of options as a list of tagged paragraphs.
function(make_options help variable)
  string(REGEX REPLACE "^.*\nOptions:\n" "" list "${help}")
  string(REGEX REPLACE "\n\n.*$" "" list "${list}")
  string(REGEX REPLACE "\n  (-[^ \n]*)( [^ \n]+|)\n +" "\n  \\1\\2  " list "\n${list}")
  # Further lines of a description stand far to the right of an option's name.
  string(REGEX REPLACE "\n          +" " " list "${list}")
  escape(list)
  string(REGEX REPLACE "\n  (\\\\-[^ \n]*)( [^ \n]+|)  +" "\n.TP\n\\\\fB\\1\\\\fI\\2\\\\fR\n" list "${list}\n")
  set(${variable} "${list}" PARENT_SCOPE)
endfunction()

read_help(help)
if(help MATCHES "\nCommands:\n(([^\n]+\n)+)")
  string(REGEX MATCHALL "(^|\n)  [a-z]+" commands "${CMAKE_MATCH_1}")
  foreach(command ${commands})
    string(STRIP "${command}" command)
    read_help(help ${command})
    string(REGEX MATCH "^usage: ([^\n]*)\n\n(.*)\n\nOptions:" ignored "${help}")
    set(usage "${CMAKE_MATCH_1}")
    set(about "${CMAKE_MATCH_2}")
    escape(usage)
    escape(about)
    make_options("${help}" options)
    string(APPEND OPTIONS ".SS ${command}\n${usage}\n.PP\n${about}${options}")
  endforeach()
else()
  make_options("${help}" OPTIONS)
endif()
configure_file(${SOURCE} ${PAGE} @ONLY)
