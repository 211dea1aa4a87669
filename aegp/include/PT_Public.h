// Tracker plug-ins: only named here, behind a pointer.
#ifndef AEGP_PT_PUBLIC_H_
#define AEGP_PT_PUBLIC_H_

typedef struct PT_TrackerEntryPoints PT_TrackerEntryPoints;

#endif  // AEGP_PT_PUBLIC_H_
