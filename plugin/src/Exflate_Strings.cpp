// The string table.
#include "Exflate_Strings.h"

const TableString g_strs[] = {
    {StrID_None, ""},
    {StrID_MenuExflate, "Exflate"},
    {StrID_MenuSelectPrecomp, "Exflate | Select a pre-comp layer"},
    {StrID_ExflateSelection, "Exflate Selection"},
    {StrID_Problems, "Exflate: Problems encountered during exflate."},
};

const char* GetStringPtr(int id) {
    return g_strs[id].text;
}
