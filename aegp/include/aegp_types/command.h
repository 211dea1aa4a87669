// Commands and menus.
#pragma once

#include "A.h"

typedef A_long AEGP_Command;
#define AEGP_Command_ALL 0

typedef A_LegacyEnumType AEGP_MenuID;
enum {
    AEGP_Menu_NONE = 0,
    AEGP_Menu_APPLE,
    AEGP_Menu_FILE,
    AEGP_Menu_EDIT,
    AEGP_Menu_COMPOSITION,
    AEGP_Menu_LAYER,
    AEGP_Menu_EFFECT,
    AEGP_Menu_WINDOW,
    AEGP_Menu_FLOATERS,
    AEGP_Menu_KF_ASSIST,
    AEGP_Menu_IMPORT,
    AEGP_Menu_SAVE_FRAME_AS,
    AEGP_Menu_PREFS,
    AEGP_Menu_EXPORT,
    AEGP_Menu_ANIMATION,
    AEGP_Menu_PURGE,
    AEGP_Menu_NEW,
};

#define AEGP_MENU_INSERT_AT_TOP 0
#define AEGP_MENU_INSERT_AT_BOTTOM (-1)
#define AEGP_MENU_INSERT_SORTED (-2)

typedef A_LegacyEnumType AEGP_WindowType;
enum {
    AEGP_WindType_NONE = 0,
    AEGP_WindType_PROJECT,
    AEGP_WindType_COMP,
    AEGP_WindType_TIME_LAYOUT,
    AEGP_WindType_LAYER,
    AEGP_WindType_FOOTAGE,
    AEGP_WindType_RENDER_QUEUE,
    AEGP_WindType_QT,
    AEGP_WindType_DIALOG,
    AEGP_WindType_FLOWCHART,
    AEGP_WindType_EFFECT,
    AEGP_WindType_OTHER,
};
