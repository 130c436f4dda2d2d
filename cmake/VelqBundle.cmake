# Application bundles: NAME.app/Contents/{Info.plist,MacOS/NAME,Resources,Helpers}, laid into the build
# folder as they are installed, so that a program runs from either place alike.
find_program(VELQ_RSVG_CONVERT rsvg-convert)
if(NOT VELQ_RSVG_CONVERT)
  message(FATAL_ERROR "rsvg-convert, which draws the icons, is missing (Debian: librsvg2-bin)")
endif()

set(VELQ_ICONS ${PROJECT_SOURCE_DIR}/resources/icons)

# "CFBundleVersion": a whole number that grows with the version, as installed copies are compared by it.
math(EXPR VELQ_BUNDLE_VERSION
     "(${PROJECT_VERSION_MAJOR} * 1000 + ${PROJECT_VERSION_MINOR}) * 1000 + ${PROJECT_VERSION_PATCH}")

# velq_drawing(OUT PICTURE DRAWING SIZE options ...)
# A rule that draws the file PICTURE, SIZE pixels wide and high, which is appended to the list OUT.
function(velq_drawing out picture drawing size)
  cmake_path(GET picture PARENT_PATH folder)
  set(style ${ARGN})
  list(FILTER style INCLUDE REGEX "\\.css$")
  add_custom_command(OUTPUT ${picture}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
    COMMAND ${VELQ_RSVG_CONVERT} ${ARGN} -w ${size} -h ${size} -o ${picture} ${drawing}
    DEPENDS ${drawing} ${style} VERBATIM)
  list(APPEND ${out} ${picture})
  set(${out} ${${out}} PARENT_SCOPE)
endfunction()

# velq_images(OUT FOLDER names ...)
# Rules that draw NAME_SIZE.png into FOLDER at the sizes that trays use; OUT gets the files. A drawing
# NAME_SIZE.svg, made for that size's pixels, goes before NAME.svg.
function(velq_images out folder)
  foreach(name IN LISTS ARGN)
    foreach(size IN ITEMS 16 22 24 32 48)
      set(drawing ${VELQ_ICONS}/${name}_${size}.svg)
      if(NOT EXISTS ${drawing})
        set(drawing ${VELQ_ICONS}/${name}.svg)
      endif()
      velq_drawing(pictures ${folder}/${name}_${size}.png ${drawing} ${size})
    endforeach()
  endforeach()
  set(${out} ${pictures} PARENT_SCOPE)
endfunction()

# The kinds of problems that the scanners check, by the names of their drawings.
set(VELQ_ITEM_IMAGES
  icon_ethernet icon_ip icon_dns icon_http
  icon_nic icon_mtu icon_cardscache icon_dns_optimize
  icon_safari icon_icloud icon_itunes icon_app_store)

# velq_item_images(OUT FOLDER)
# Rules that draw what the scanners' hosts show into FOLDER, each also for screens of twice the pixels:
# the items, normal and selected, and the mark in the row of an address that is wrong. OUT gets the files.
function(velq_item_images out folder)
  foreach(size IN ITEMS 32 64)
    foreach(name IN LISTS VELQ_ITEM_IMAGES)
      set(drawing ${VELQ_ICONS}/${name}.svg)
      velq_drawing(pictures ${folder}/${name}_normal_${size}.png ${drawing} ${size})
      velq_drawing(pictures ${folder}/${name}_select_${size}.png ${drawing} ${size}
        --stylesheet ${VELQ_ICONS}/selected.css)
    endforeach()
  endforeach()
  foreach(size IN ITEMS 12 24)
    velq_drawing(pictures ${folder}/icon_list_puzzle_${size}.png ${VELQ_ICONS}/icon_list_puzzle.svg ${size})
  endforeach()
  set(${out} ${pictures} PARENT_SCOPE)
endfunction()

# velq_helpers(OUT FOLDER targets ...)
# Rules that link the targets' programs into FOLDER; OUT gets a stamp for each, as a program's file name
# is known only when the build files are written.
function(velq_helpers out folder)
  foreach(helper IN LISTS ARGN)
    set(stamp ${CMAKE_CURRENT_BINARY_DIR}/${helper}.linked)
    add_custom_command(OUTPUT ${stamp}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
      COMMAND ${CMAKE_COMMAND} -E create_symlink
              $<TARGET_FILE:${helper}> ${folder}/$<TARGET_FILE_NAME:${helper}>
      COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
      DEPENDS ${helper} VERBATIM)
    list(APPEND stamps ${stamp})
  endforeach()
  set(${out} ${stamps} PARENT_SCOPE)
endfunction()

# velq_resources(OUT FOLDER files ...)
# Rules that copy the files into FOLDER; OUT gets the copies.
function(velq_resources out folder)
  foreach(file IN LISTS ARGN)
    cmake_path(GET file FILENAME name)
    add_custom_command(OUTPUT ${folder}/${name}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
      COMMAND ${CMAKE_COMMAND} -E copy ${file} ${folder}/${name}
      DEPENDS ${file} VERBATIM)
    list(APPEND copies ${folder}/${name})
  endforeach()
  set(${out} ${copies} PARENT_SCOPE)
endfunction()

# velq_bundle(TARGET INSTALL_IN folder COMMAND name [ITEM_IMAGES] [IMAGES names ...] [HELPERS targets ...]
#             [RESOURCES files ...] [RESOURCE_PROGRAMS targets ...])
# Makes the executable TARGET the program of the bundle TARGET.app. Its information dictionary is
# resources/TARGET/Info.plist.in, its images are drawings in resources/icons, with ITEM_IMAGES those of the
# scanners' items too; further resources are files, and programs of other targets, which are installed as
# they were linked. It is installed in the prefix's folder INSTALL_IN, with a link bin/COMMAND to its program.
function(velq_bundle target)
  cmake_parse_arguments(arg "ITEM_IMAGES" "INSTALL_IN;COMMAND" "IMAGES;HELPERS;RESOURCES;RESOURCE_PROGRAMS" ${ARGN})
  set(contents ${PROJECT_BINARY_DIR}/${target}.app/Contents)
  set_target_properties(${target} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${contents}/MacOS VELQ_HELPERS "${arg_HELPERS}")
  configure_file(${PROJECT_SOURCE_DIR}/resources/${target}/Info.plist.in ${contents}/Info.plist @ONLY)
  velq_images(pictures ${contents}/Resources ${arg_IMAGES})
  if(arg_ITEM_IMAGES)
    velq_item_images(items ${contents}/Resources)
    list(APPEND pictures ${items})
  endif()
  velq_helpers(helpers ${contents}/Helpers ${arg_HELPERS})
  velq_helpers(programs ${contents}/Resources ${arg_RESOURCE_PROGRAMS})
  velq_resources(resources ${contents}/Resources ${arg_RESOURCES})
  add_custom_target(${target}_bundle ALL DEPENDS ${pictures} ${helpers} ${programs} ${resources})
  add_dependencies(${target} ${target}_bundle)

  set(installed ${arg_INSTALL_IN}/${target}.app/Contents)
  install(TARGETS ${target} DESTINATION ${installed}/MacOS)
  install(FILES ${contents}/Info.plist DESTINATION ${installed})
  install(FILES ${pictures} ${resources} DESTINATION ${installed}/Resources)
  # As files, not as targets: nothing in them is changed on the way, their digests are known elsewhere.
  foreach(helper IN LISTS arg_HELPERS)
    install(PROGRAMS $<TARGET_FILE:${helper}> DESTINATION ${installed}/Helpers)
  endforeach()
  foreach(program IN LISTS arg_RESOURCE_PROGRAMS)
    install(PROGRAMS $<TARGET_FILE:${program}> DESTINATION ${installed}/Resources)
  endforeach()
  velq_install_link(bin/${arg_COMMAND} ${installed}/MacOS/${target})
endfunction()

# velq_install_link(LINK FILE)
# Installs a relative symbolic link, both inside the prefix: the tree may be moved as a whole.
function(velq_install_link link file)
  cmake_path(GET link PARENT_PATH folder)
  file(RELATIVE_PATH way /${folder} /${file})
  install(CODE "
    set(link \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${link}\")
    cmake_path(GET link PARENT_PATH folder)
    file(MAKE_DIRECTORY \"\${folder}\")
    message(STATUS \"Installing: \${link}\")
    file(CREATE_LINK ${way} \"\${link}\" SYMBOLIC)")
endfunction()
