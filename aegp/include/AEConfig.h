// Which system the host runs on: AE_OS_WIN or AE_OS_MAC; elsewhere neither, and everything is laid out as on macOS.
#pragma once

#if defined(_WIN32)
#define AE_OS_WIN 1
#elif defined(__APPLE__)
#define AE_OS_MAC 1
#endif
