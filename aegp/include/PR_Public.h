// Renderer plug-ins: only named here, behind a pointer.
#pragma once

typedef struct PR_ArtisanEntryPoints PR_ArtisanEntryPoints;
