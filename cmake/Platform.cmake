# Defines the interface target `appkit`: everything that a source needs to compile and link against AppKit (Cocoa on macOS,
# GNUstep elsewhere), and on GNUstep the path that makes <WebKit/WebKit.h> ours.
#
# VIREONIX_PARTS names the object libraries that make up the plug-in, for the bundle and for test programs alike.
add_library(appkit INTERFACE)
set(VIREONIX_PARTS vireonix_core vireonix_bridge vireonix_platform vireonix_classes)
if(NOT APPLE)
  list(APPEND VIREONIX_PARTS vireonix_webkit vireonix_web_engine)
endif()
if(VIREONIX_CORE_ONLY)
  return()
endif()

if(APPLE)
  target_link_libraries(appkit INTERFACE "-framework Cocoa" "-framework WebKit")
  # WebView and the older nib call are deprecated there, and meant.
  target_compile_options(appkit INTERFACE -Wno-deprecated-declarations)
  return()
endif()

find_program(GNUSTEP_CONFIG gnustep-config REQUIRED)
execute_process(COMMAND ${GNUSTEP_CONFIG} --objc-flags
                OUTPUT_VARIABLE gnustepFlags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${GNUSTEP_CONFIG} --gui-libs
                OUTPUT_VARIABLE gnustepLibs OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
# objc/objc.h belongs to gcc's runtime.
execute_process(COMMAND gcc -print-file-name=include
                OUTPUT_VARIABLE gccInclude OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

separate_arguments(gnustepFlags UNIX_COMMAND "${gnustepFlags}")
set(gnustepIncludes "")
foreach(flag IN LISTS gnustepFlags)
  if(flag MATCHES "^-I/(.*)$")
    list(APPEND gnustepIncludes "/${CMAKE_MATCH_1}")
  endif()
endforeach()
# Warnings, optimisation, debug information and dependency files are this build's own business.
list(FILTER gnustepFlags EXCLUDE REGEX "^-(I|W|O|g|M|fPIC)")
separate_arguments(gnustepLibs UNIX_COMMAND "${gnustepLibs}")
list(REMOVE_ITEM gnustepLibs -shared-libgcc)

target_include_directories(appkit SYSTEM INTERFACE ${gnustepIncludes})
target_include_directories(appkit INTERFACE "${CMAKE_SOURCE_DIR}/Sources/Platform/GNUstep")
target_compile_options(appkit INTERFACE
  "$<$<COMPILE_LANGUAGE:OBJCXX>:${gnustepFlags};-fobjc-runtime=gcc;SHELL:-idirafter ${gccInclude};-Werror=objc-property-implementation>")
target_link_libraries(appkit INTERFACE ${gnustepLibs})
