// Included by every header of Core: proves at compile time that Core is plain C++ and sees neither
// Foundation, AppKit, GTK nor WebKit. Headers of Core may be included from Objective-C++, so only
// Core's own sources are held to "no Objective-C".
#pragma once

#if defined(VIREONIX_COMPILING_CORE) && defined(__OBJC__)
#error "Core is compiled as plain C++"
#endif

#if defined(VIREONIX_COMPILING_CORE) &&                                                            \
    (defined(__GTK_H__) || defined(__WEBKIT_WEB_VIEW_H__) || defined(_Foundation_h_GNUSTEP_H) ||   \
     defined(_X11_XLIB_H_))
#error "Core must not see a user-interface header"
#endif
