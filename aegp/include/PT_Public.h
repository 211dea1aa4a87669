// Tracker plug-ins: only named here, behind a pointer.
#pragma once

typedef struct PT_TrackerEntryPoints PT_TrackerEntryPoints;
