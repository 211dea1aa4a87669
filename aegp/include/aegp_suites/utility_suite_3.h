// Messages, undo groups, palettes, consoles.
#pragma once

#include "aegp_types/color.h"
#include "aegp_types/handles.h"
#include "aegp_types/plugin.h"

typedef struct AEGP_UtilitySuite3 {
    A_Err (*AEGP_ReportInfo)(AEGP_PluginID aegp_plugin_id, const A_char* info_stringZ);
    A_Err (*AEGP_GetDriverPluginInitFuncVersion)(A_short* major_versionPS, A_short* minor_versionPS);
    A_Err (*AEGP_GetDriverImplementationVersion)(A_short* major_versionPS, A_short* minor_versionPS);
    A_Err (*AEGP_StartQuietErrors)(AEGP_ErrReportState* err_stateP);
    A_Err (*AEGP_EndQuietErrors)(A_Boolean report_quieted_errorsB, AEGP_ErrReportState* err_stateP);
    A_Err (*AEGP_StartUndoGroup)(const A_char* undo_nameZ);
    A_Err (*AEGP_EndUndoGroup)(void);
    A_Err (*AEGP_RegisterWithAEGP)(AEGP_GlobalRefcon global_refcon, const A_char* plugin_nameZ,
                                   AEGP_PluginID* plugin_id);
    A_Err (*AEGP_GetMainHWND)(void* main_hwnd);
    A_Err (*AEGP_ShowHideAllFloaters)(A_Boolean include_tool_palB);
    A_Err (*AEGP_PaintPalGetForeColor)(AEGP_ColorVal* fore_colorP);
    A_Err (*AEGP_PaintPalGetBackColor)(AEGP_ColorVal* back_colorP);
    A_Err (*AEGP_PaintPalSetForeColor)(const AEGP_ColorVal* fore_colorP);
    A_Err (*AEGP_PaintPalSetBackColor)(const AEGP_ColorVal* back_colorP);
    A_Err (*AEGP_CharPalGetFillColor)(A_Boolean* is_fill_color_definedPB, AEGP_ColorVal* fill_colorP);
    A_Err (*AEGP_CharPalGetStrokeColor)(A_Boolean* is_stroke_color_definedPB, AEGP_ColorVal* stroke_colorP);
    A_Err (*AEGP_CharPalSetFillColor)(const AEGP_ColorVal* fill_colorP);
    A_Err (*AEGP_CharPalSetStrokeColor)(const AEGP_ColorVal* stroke_colorP);
    A_Err (*AEGP_CharPalIsFillColorUIFrontmost)(A_Boolean* is_fill_color_selectedPB);
    A_Err (*AEGP_ConvertFpLongToHSFRatio)(A_FpLong numberF, A_Ratio* ratioPR);
    A_Err (*AEGP_ConvertHSFRatioToFpLong)(A_Ratio ratioR, A_FpLong* numberPF);
    A_Err (*AEGP_CauseIdleRoutinesToBeCalled)(void);
    A_Err (*AEGP_GetSuppressInteractiveUI)(A_Boolean* ui_is_suppressedPB);
    A_Err (*AEGP_WriteToOSConsole)(const A_char* textZ);
    A_Err (*AEGP_WriteToDebugLog)(const A_char* subsystemZ, const A_char* event_typeZ, const A_char* infoZ);
} AEGP_UtilitySuite3;
