#pragma once

#include <X11/Xlib.h>
#include <X11/Xresource.h>
#include <X11/Xutil.h>

// Words of Xlib that are names elsewhere.
#undef None
#undef Bool

namespace ZQV {

// NOLINTBEGIN(cppcoreguidelines-macro-usage,bugprone-macro-parentheses): one list, for the members
// and for their names

/** The functions of Xlib in use. */
#define ZQV_XLIB_FUNCTIONS(F) \
  F(XAllocColor)              \
  F(XBell)                    \
  F(XChangeGC)                \
  F(XCheckTypedEvent)         \
  F(XCheckWindowEvent)        \
  F(XClearWindow)             \
  F(XCloseDisplay)            \
  F(XCopyArea)                \
  F(XCreateBitmapFromData)    \
  F(XCreateFontCursor)        \
  F(XCreateGC)                \
  F(XCreateImage)             \
  F(XCreatePixmap)            \
  F(XCreateWindow)            \
  F(XDefineCursor)            \
  F(XDestroyWindow)           \
  F(XDrawLine)                \
  F(XDrawLines)               \
  F(XDrawString)              \
  F(XExtendedMaxRequestSize)  \
  F(XFetchName)               \
  F(XFillPolygon)             \
  F(XFillRectangle)           \
  F(XFlush)                   \
  F(XFree)                    \
  F(XFreeCursor)              \
  F(XFreeFontInfo)            \
  F(XFreeFont)                \
  F(XFreeGC)                  \
  F(XFreePixmap)              \
  F(XGetErrorDatabaseText)    \
  F(XGetErrorText)            \
  F(XGetGCValues)             \
  F(XGetImage)                \
  F(XGetWindowAttributes)     \
  F(XInternAtom)              \
  F(XLoadQueryFont)           \
  F(XLookupString)            \
  F(XMapWindow)               \
  F(XMaxRequestSize)          \
  F(XNextEvent)               \
  F(XOpenDisplay)             \
  F(XParseColor)              \
  F(XPending)                 \
  F(XPutImage)                \
  F(XQueryPointer)            \
  F(XResizeWindow)            \
  F(XSetClassHint)            \
  F(XSetClipMask)             \
  F(XSetClipOrigin)           \
  F(XSetClipRectangles)       \
  F(XSetDashes)               \
  F(XSetErrorHandler)         \
  F(XSetFillStyle)            \
  F(XSetFont)                 \
  F(XSetForeground)           \
  F(XSetIOErrorExitHandler)   \
  F(XSetIOErrorHandler)       \
  F(XSetIconName)             \
  F(XSetLineAttributes)       \
  F(XSetStandardProperties)   \
  F(XSetStipple)              \
  F(XSetWMHints)              \
  F(XSetWMNormalHints)        \
  F(XSetWMProtocols)          \
  F(XStoreName)               \
  F(XSync)                    \
  F(XTextWidth)               \
  F(XUnmapWindow)

/** Xlib, loaded when a window is opened: pictures written to files need none. The members are the
 * functions of the same names. */
struct XLib {
  /** @return absent if the library can't be loaded or lacks a function */
  static const XLib* get();

#define ZQV_XLIB_MEMBER(name) decltype(&::name) name = nullptr;
  ZQV_XLIB_FUNCTIONS(ZQV_XLIB_MEMBER)
#undef ZQV_XLIB_MEMBER
};

// NOLINTEND(cppcoreguidelines-macro-usage,bugprone-macro-parentheses)

}  // namespace ZQV
