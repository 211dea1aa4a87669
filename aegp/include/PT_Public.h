// Tracker plug-ins: only named here, behind a pointer.
#ifndef EXFLATE_AEGP_PT_PUBLIC_H_
#define EXFLATE_AEGP_PT_PUBLIC_H_

typedef struct PT_TrackerEntryPoints PT_TrackerEntryPoints;

#endif  // EXFLATE_AEGP_PT_PUBLIC_H_
