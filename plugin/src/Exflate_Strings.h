// The texts that the shell shows to the user.
#pragma once

enum {
    StrID_None,
    StrID_MenuExflate,        // the menu item while it can be chosen; also the name of the undo group
    StrID_MenuSelectPrecomp,  // the menu item while it cannot
    StrID_ExflateSelection,   // shown nowhere
    StrID_Problems,           // start-up registration failed
};

struct TableString {
    int id;
    char text[256];
};

// A row's position is its id; the stored id is never searched.
extern const TableString g_strs[];

// The text of the row at position id. Static; the id is not checked.
const char* GetStringPtr(int id);
