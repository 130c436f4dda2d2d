cmake_minimum_required(VERSION 3.25)

# cmake -D SOURCE=folder -D BUILD=folder -D DAEMON=file -D TOOLS=files -P VelqDemonScripts.cmake
# Writes the scripts of the root daemon's installation into BUILD.

# add_row(SOURCE-WORD FILE MODE PLACE): one more row of the table of what is installed.
function(add_row word file mode place)
  file(SIZE ${file} size)
  file(SHA256 ${file} digest)
  string(APPEND FILES "${size} ${digest} ${mode} ${word} ${place}\n")
  set(FILES ${FILES} PARENT_SCOPE)
endfunction()

# add_text(NAME PLACE): a text that lies among the bundle's resources.
macro(add_text name place)
  add_row(${name} ${SOURCE}/${name} 0644 ${place})
endmacro()

# The order is the one in which they are put in place: the bus policies open the door, so they are last.
function(make_table)
  foreach(tool IN LISTS TOOLS)
    cmake_path(GET tool FILENAME name)
    add_row(tool/${name} ${tool} 0755 /usr/libexec/velq/nettools/${name})
  endforeach()
  add_row(daemon ${DAEMON} 0755 /usr/libexec/velq/VelqDemon)
  add_row(plist ${SOURCE}/com.zelmor.VelqDemon.plist 0644 /usr/libexec/velq/com.zelmor.VelqDemon.plist)
  add_text(com.zelmor.velqdemon.policy /usr/share/polkit-1/actions/com.zelmor.velqdemon.policy)
  add_text(com.zelmor.VelqDemon.service /etc/systemd/system/com.zelmor.VelqDemon.service)
  add_text(com.zelmor.VelqDamonObject.service
    /usr/share/dbus-1/system-services/com.zelmor.VelqDamonObject.service)
  add_text(com.zelmor.VelqDamonObject.conf /etc/dbus-1/system.d/com.zelmor.VelqDamonObject.conf)
  add_text(com.zelmor.VelqDamonObject.UID.conf /etc/dbus-1/system.d/com.zelmor.VelqDamonObject.UID.conf)
  string(STRIP "${FILES}" FILES)
  set(FILES ${FILES} PARENT_SCOPE)
endfunction()

# put_together(OUT NAME): the script, with the parts that it shares with others in their places.
function(put_together out name)
  file(READ ${SOURCE}/${name}.in text)
  foreach(part IN ITEMS person.sh places.sh)
    file(READ ${SOURCE}/${part} shared)
    string(REGEX REPLACE "^# shellcheck[^\n]*\n" "" shared "${shared}")
    string(STRIP "${shared}" shared)
    string(REPLACE "# @${part}@" "${shared}" text "${text}")
  endforeach()
  string(REPLACE "@FILES@" "${FILES}" text "${text}")
  set(${out} "${text}" PARENT_SCOPE)
endfunction()

# write_script(NAME DIGEST): what a bundle has among its resources.
function(write_script name digest)
  put_together(text ${name})
  file(WRITE ${BUILD}/${name} "${text}")
  file(SHA256 ${BUILD}/${name} sum)
  set(${digest} ${sum} PARENT_SCOPE)
endfunction()

make_table()
write_script(copy.sh COPY_DIGEST)
write_script(remove.sh REMOVE_DIGEST)

# It travels in an argument list: without what only its readers need.
put_together(BOOTSTRAP bootstrap.sh)
string(REGEX REPLACE "\n *#[^\n]*" "" BOOTSTRAP "\n${BOOTSTRAP}")
string(REGEX REPLACE "\n\n+" "\n" BOOTSTRAP "${BOOTSTRAP}")
string(STRIP "${BOOTSTRAP}" BOOTSTRAP)
file(WRITE ${BUILD}/bootstrap.sh "${BOOTSTRAP}")
configure_file(${SOURCE}/DaemonScripts.cpp.in ${BUILD}/DaemonScripts.cpp @ONLY)
