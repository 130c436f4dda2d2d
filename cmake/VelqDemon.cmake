# What the root daemon's installation is made of. Its scripts carry the digest of everything that they
# install, and the programs carry the scripts' digests: they are written once all of that is built.
set(VELQ_DEMON_SOURCE ${PROJECT_SOURCE_DIR}/resources/VelqDemon)
set(VELQ_DEMON_BUILD ${PROJECT_BINARY_DIR}/resources/VelqDemon)

set(VELQ_DEMON_TEXTS
  ${VELQ_DEMON_SOURCE}/com.zelmor.VelqDemon.plist
  ${VELQ_DEMON_SOURCE}/com.zelmor.VelqDemon.service
  ${VELQ_DEMON_SOURCE}/com.zelmor.VelqDamonObject.service
  ${VELQ_DEMON_SOURCE}/com.zelmor.VelqDamonObject.conf
  ${VELQ_DEMON_SOURCE}/com.zelmor.VelqDamonObject.UID.conf
  ${VELQ_DEMON_SOURCE}/com.zelmor.velqdemon.policy)

# Beside the program itself, what a bundle needs among its resources to install the daemon.
set(VELQ_DEMON_RESOURCES
  ${VELQ_DEMON_TEXTS} ${VELQ_DEMON_BUILD}/copy.sh ${VELQ_DEMON_BUILD}/remove.sh)

# Compiled into those who start the scripts.
set(VELQ_DEMON_CONSTANTS ${VELQ_DEMON_BUILD}/DaemonScripts.cpp)

# velq_demon_scripts(DAEMON tools ...)
# The target velq_demon_scripts makes them from the programs of these targets.
function(velq_demon_scripts daemon)
  set(programs "")
  foreach(tool IN LISTS ARGN)
    list(APPEND programs $<TARGET_FILE:${tool}>)
  endforeach()
  set(parts bootstrap.sh.in copy.sh.in remove.sh.in person.sh places.sh DaemonScripts.cpp.in)
  list(TRANSFORM parts PREPEND ${VELQ_DEMON_SOURCE}/)
  set(results copy.sh remove.sh bootstrap.sh DaemonScripts.cpp)
  list(TRANSFORM results PREPEND ${VELQ_DEMON_BUILD}/)
  set(script ${PROJECT_SOURCE_DIR}/cmake/VelqDemonScripts.cmake)
  add_custom_command(OUTPUT ${results}
    COMMAND ${CMAKE_COMMAND}
            -D SOURCE=${VELQ_DEMON_SOURCE} -D BUILD=${VELQ_DEMON_BUILD} -D DAEMON=$<TARGET_FILE:${daemon}>
            -D "TOOLS=${programs}" -P ${script}
    DEPENDS ${script} ${parts} ${VELQ_DEMON_TEXTS} ${daemon} ${ARGN} VERBATIM)
  add_custom_target(velq_demon_scripts DEPENDS ${results})
endfunction()
