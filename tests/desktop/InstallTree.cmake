# Installs the build into a temporary DESTDIR under a prefix of its own and checks what lands
# where. With MODE "validate" it runs desktop-file-validate on the installed entry instead (and
# says SKIPPED when the tool is absent).
#   cmake -DBUILD_DIR=<build> -DWORK=<folder> -DMODE=install|validate -P InstallTree.cmake
cmake_minimum_required(VERSION 3.25)
set(prefix /opt/marnoquill-test)
set(root ${WORK}${prefix})
set(entry ${root}/share/applications/marnoquill.desktop)

function(fail text)
  message(SEND_ERROR "${text}")
endfunction()

if(MODE STREQUAL "validate")
  find_program(validator desktop-file-validate)
  if(NOT validator)
    message("SKIPPED: desktop-file-validate is not installed")
    return()
  endif()
  execute_process(COMMAND ${validator} ${entry} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT rc EQUAL 0 OR NOT out STREQUAL "")
    message(FATAL_ERROR "desktop-file-validate: ${out}")
  endif()
  return()
endif()

file(REMOVE_RECURSE ${WORK})
execute_process(COMMAND ${CMAKE_COMMAND} -E env DESTDIR=${WORK} ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix}
  RESULT_VARIABLE rc OUTPUT_QUIET)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "install failed: ${rc}")
endif()

foreach(f lib/marnoquill/marnoquill lib/marnoquill/Marnoquill.ini lib/marnoquill/Marnoquill.html
          share/applications/marnoquill.desktop share/icons/hicolor/scalable/apps/marnoquill.svg
          share/mime/packages/marnoquill.xml bin/marnoquill-doc
          share/dbus-1/services/org.ombrelark.Marnoquill.service
          share/dbus-1/interfaces/org.ombrelark.Marnoquill.xml)
  if(NOT EXISTS ${root}/${f})
    fail("missing: ${f}")
  endif()
endforeach()
# Only below the prefix: nothing written to the live system.
file(GLOB_RECURSE outside LIST_DIRECTORIES false RELATIVE ${WORK} ${WORK}/*)
list(FILTER outside EXCLUDE REGEX "^opt/marnoquill-test/")
if(outside)
  fail("installed outside the prefix: ${outside}")
endif()

# The command is a link to the program, so the program still finds its files beside itself.
file(READ_SYMLINK ${root}/bin/marnoquill link)
if(NOT link STREQUAL "../lib/marnoquill/marnoquill")
  fail("bin/marnoquill points to '${link}'")
endif()
# The default settings go out as built, byte for byte.
file(SHA256 ${root}/lib/marnoquill/Marnoquill.ini installed)
file(SHA256 ${BUILD_DIR}/Marnoquill.ini built)
if(NOT installed STREQUAL built)
  fail("the installed Marnoquill.ini differs from the built one")
endif()

file(READ ${entry} text)
foreach(line "Exec=${prefix}/bin/marnoquill %F" "Name=Marnoquill" "Name[ja]=Marnoquill 文書ビューア" "Icon=marnoquill")
  string(FIND "${text}" "\n${line}\n" at)
  if(at EQUAL -1)
    fail("desktop entry lacks: ${line}")
  endif()
endforeach()
# The MIME line holds ";", which a CMake list would split: it is checked on its own.
string(FIND "${text}" [=[
MimeType=image/tiff;application/vnd.fujixerox.docuworks;
]=] at)
if(at EQUAL -1)
  fail("desktop entry lacks the MIME types")
endif()

# A call to the common bus name starts the installed program.
file(READ ${root}/share/dbus-1/services/org.ombrelark.Marnoquill.service service)
if(NOT service STREQUAL "[D-BUS Service]\nName=org.ombrelark.Marnoquill\nExec=${prefix}/bin/marnoquill\n")
  fail("D-Bus service file: ${service}")
endif()

# The file type definition, read by the desktop's own tool where it is installed.
find_program(update_mime update-mime-database)
if(update_mime)
  execute_process(COMMAND ${update_mime} ${root}/share/mime RESULT_VARIABLE rc OUTPUT_QUIET ERROR_QUIET)
  file(READ ${root}/share/mime/globs2 globs)
  string(FIND "${globs}" "\n50:application/vnd.fujixerox.docuworks:*.xdw\n" at)
  if(NOT rc EQUAL 0 OR at EQUAL -1)
    fail("*.xdw is not DocuWorks after update-mime-database (${rc}): ${globs}")
  endif()
endif()
