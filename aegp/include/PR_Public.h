// Renderer plug-ins: only named here, behind a pointer.
#ifndef AEGP_PR_PUBLIC_H_
#define AEGP_PR_PUBLIC_H_

typedef struct PR_ArtisanEntryPoints PR_ArtisanEntryPoints;

#endif  // AEGP_PR_PUBLIC_H_
