// Renderer plug-ins: only named here, behind a pointer.
#ifndef EXFLATE_AEGP_PR_PUBLIC_H_
#define EXFLATE_AEGP_PR_PUBLIC_H_

typedef struct PR_ArtisanEntryPoints PR_ArtisanEntryPoints;

#endif  // EXFLATE_AEGP_PR_PUBLIC_H_
