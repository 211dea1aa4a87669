// The layout of every type, as numbers: a header that lays one out differently does not compile.
#include "layout_checks.h"

// Types that are one byte, except on Windows.
#ifdef AE_OS_WIN
CHECK_SIZE(A_LegacyEnumType, 4, 4);
CHECK_SIZE(SPBoolean, 4, 4);
CHECK_SIZE(AEGP_WindowType, 4, 4);
CHECK_SIZE(AEGP_MenuID, 4, 4);
CHECK_SIZE(AEGP_CollectionItemType, 4, 4);
CHECK_SIZE(AEGP_StreamCollectionItemType, 4, 4);
#else
CHECK_SIZE(A_LegacyEnumType, 1, 1);
CHECK_SIZE(SPBoolean, 1, 1);
CHECK_SIZE(AEGP_WindowType, 1, 1);
CHECK_SIZE(AEGP_MenuID, 1, 1);
CHECK_SIZE(AEGP_CollectionItemType, 1, 1);
CHECK_SIZE(AEGP_StreamCollectionItemType, 1, 1);
CHECK_SIZE(uint8, 1, 1);
#endif

// Numbers and the basic suite's types.
CHECK_SIZE(A_long, 4, 4);
CHECK_SIZE(A_u_long, 4, 4);
CHECK_SIZE(A_char, 1, 1);
CHECK_SIZE(A_FpLong, 8, 8);
CHECK_SIZE(A_Err, 4, 4);
CHECK_SIZE(A_Handle, 8, 8);
CHECK_SIZE(A_short, 2, 2);
CHECK_SIZE(A_u_short, 2, 2);
CHECK_SIZE(A_u_char, 1, 1);
CHECK_SIZE(A_Boolean, 1, 1);
CHECK_SIZE(A_UTF16Char, 2, 2);
CHECK_SIZE(int32, 4, 4);
CHECK_SIZE(SPErr, 4, 4);

// The effect side, fields, files.
CHECK_SIZE(PF_ParamType, 4, 4);
CHECK_SIZE(PF_Err, 4, 4);
CHECK_SIZE(PF_Cmd, 4, 4);
CHECK_SIZE(PF_ParamIndex, 4, 4);
CHECK_SIZE(PF_TransferMode, 4, 4);
CHECK_SIZE(FIEL_Type, 4, 4);
CHECK_SIZE(FIEL_Order, 4, 4);
CHECK_SIZE(AEIO_FileType, 4, 4);

// Handles and reference constants.
CHECK_SIZE(AEGP_MemHandle, 8, 8);
CHECK_SIZE(AEGP_ProjectH, 8, 8);
CHECK_SIZE(AEGP_ItemH, 8, 8);
CHECK_SIZE(AEGP_CompH, 8, 8);
CHECK_SIZE(AEGP_FootageH, 8, 8);
CHECK_SIZE(AEGP_LayerH, 8, 8);
CHECK_SIZE(AEGP_EffectRefH, 8, 8);
CHECK_SIZE(AEGP_MaskRefH, 8, 8);
CHECK_SIZE(AEGP_StreamRefH, 8, 8);
CHECK_SIZE(AEGP_MaskOutlineValH, 8, 8);
CHECK_SIZE(AEGP_Collection2H, 8, 8);
CHECK_SIZE(AEGP_SoundDataH, 8, 8);
CHECK_SIZE(AEGP_AddKeyframesInfoH, 8, 8);
CHECK_SIZE(AEGP_TextDocumentH, 8, 8);
CHECK_SIZE(AEGP_MarkerValP, 8, 8);
CHECK_SIZE(AEGP_ItemViewP, 8, 8);
CHECK_SIZE(AEGP_GlobalRefcon, 8, 8);
CHECK_SIZE(AEGP_CommandRefcon, 8, 8);
CHECK_SIZE(AEGP_UpdateMenuRefcon, 8, 8);
CHECK_SIZE(AEGP_DeathRefcon, 8, 8);
CHECK_SIZE(AEGP_VersionRefcon, 8, 8);
CHECK_SIZE(AEGP_AboutStringRefcon, 8, 8);
CHECK_SIZE(AEGP_AboutRefcon, 8, 8);
CHECK_SIZE(AEGP_IdleRefcon, 8, 8);
CHECK_SIZE(AEGP_IORefcon, 8, 8);

// Numbers of the general interface.
CHECK_SIZE(AEGP_PluginID, 4, 4);
CHECK_SIZE(AEGP_Platform, 4, 4);
CHECK_SIZE(AEGP_ProjBitDepth, 1, 1);
CHECK_SIZE(AEGP_LayerIDVal, 4, 4);
CHECK_SIZE(AEGP_MaskIDVal, 4, 4);
CHECK_SIZE(AEGP_TimeDisplayType, 1, 1);
CHECK_SIZE(AEGP_TimeDisplayMode, 1, 1);
CHECK_SIZE(AEGP_SourceTimecodeDisplayMode, 1, 1);
CHECK_SIZE(AEGP_FramesDisplayMode, 1, 1);
CHECK_SIZE(AEGP_SoundEncoding, 4, 4);
CHECK_SIZE(AEGP_ItemType, 2, 2);
CHECK_SIZE(AEGP_ItemFlags, 4, 4);
CHECK_SIZE(AEGP_LabelID, 1, 1);
CHECK_SIZE(AEGP_CompFlags, 4, 4);
CHECK_SIZE(AEGP_MemFlag, 4, 4);
CHECK_SIZE(AEGP_MemSize, 4, 4);
CHECK_SIZE(AEGP_TransferFlags, 4, 4);
CHECK_SIZE(AEGP_TrackMatte, 4, 4);
CHECK_SIZE(AEGP_LayerQuality, 2, 2);
CHECK_SIZE(AEGP_LayerFlags, 4, 4);
CHECK_SIZE(AEGP_ObjectType, 4, 4);
CHECK_SIZE(AEGP_LTimeMode, 2, 2);
CHECK_SIZE(AEGP_LayerStream, 4, 4);
CHECK_SIZE(AEGP_MaskStream, 4, 4);
CHECK_SIZE(AEGP_StreamFlags, 4, 4);
CHECK_SIZE(AEGP_OneDVal, 8, 8);
CHECK_SIZE(AEGP_FourDVal, 32, 8);
CHECK_SIZE(AEGP_ArbBlockVal, 8, 8);
CHECK_SIZE(AEGP_KeyframeInterpolationType, 4, 4);
CHECK_SIZE(AEGP_KeyInterpolationMask, 4, 4);
CHECK_SIZE(AEGP_StreamType, 4, 4);
CHECK_SIZE(AEGP_KeyframeIndex, 4, 4);
CHECK_SIZE(AEGP_KeyframeFlags, 4, 4);
CHECK_SIZE(AEGP_InstalledEffectKey, 4, 4);
CHECK_SIZE(AEGP_EffectFlags, 4, 4);
CHECK_SIZE(AEGP_EffectIndex, 4, 4);
CHECK_SIZE(AEGP_MaskIndex, 4, 4);
CHECK_SIZE(AEGP_VertexIndex, 4, 4);
CHECK_SIZE(AEGP_InterlaceLabel, 18, 2);
CHECK_SIZE(AEGP_AlphaFlags, 4, 4);
CHECK_SIZE(AEGP_PulldownPhase, 4, 4);
CHECK_SIZE(AEGP_LayerDrawStyle, 4, 4);
CHECK_SIZE(AEGP_FootageSignature, 4, 4);
CHECK_SIZE(AEGP_InterpretationStyle, 1, 1);
CHECK_SIZE(AEGP_Command, 4, 4);
CHECK_SIZE(AEGP_HookPriority, 4, 4);
CHECK_SIZE(AEGP_GetPathTypes, 4, 4);
CHECK_SIZE(AEGP_MarkerValH, 8, 8);

// Functions a plug-in hands to the host.
CHECK_SIZE(AEGP_CommandHook, 8, 8);
CHECK_SIZE(AEGP_UpdateMenuHook, 8, 8);
CHECK_SIZE(AEGP_DeathHook, 8, 8);
CHECK_SIZE(AEGP_VersionHook, 8, 8);
CHECK_SIZE(AEGP_AboutStringHook, 8, 8);
CHECK_SIZE(AEGP_AboutHook, 8, 8);
CHECK_SIZE(AEGP_IdleHook, 8, 8);
CHECK_SIZE(AEGP_PluginInitFunc, 8, 8);

// Signedness, where the width alone would not tell.
CHECK_SIGNED(A_long);
CHECK_SIGNED(A_Err);
CHECK_SIGNED(A_short);
CHECK_SIGNED(int32);
CHECK_SIGNED(SPErr);
CHECK_SIGNED(PF_ParamType);
CHECK_SIGNED(PF_Err);
CHECK_SIGNED(PF_Cmd);
CHECK_SIGNED(PF_ParamIndex);
CHECK_SIGNED(PF_TransferMode);
CHECK_SIGNED(AEIO_FileType);
CHECK_SIGNED(AEGP_PluginID);
CHECK_SIGNED(AEGP_Platform);
CHECK_SIGNED(AEGP_LayerIDVal);
CHECK_SIGNED(AEGP_MaskIDVal);
CHECK_SIGNED(AEGP_SoundEncoding);
CHECK_SIGNED(AEGP_ItemType);
CHECK_SIGNED(AEGP_ItemFlags);
CHECK_SIGNED(AEGP_CompFlags);
CHECK_SIGNED(AEGP_MemFlag);
CHECK_SIGNED(AEGP_TransferFlags);
CHECK_SIGNED(AEGP_TrackMatte);
CHECK_SIGNED(AEGP_LayerQuality);
CHECK_SIGNED(AEGP_LayerFlags);
CHECK_SIGNED(AEGP_ObjectType);
CHECK_SIGNED(AEGP_LTimeMode);
CHECK_SIGNED(AEGP_LayerStream);
CHECK_SIGNED(AEGP_MaskStream);
CHECK_SIGNED(AEGP_StreamFlags);
CHECK_SIGNED(AEGP_KeyframeInterpolationType);
CHECK_SIGNED(AEGP_KeyInterpolationMask);
CHECK_SIGNED(AEGP_StreamType);
CHECK_SIGNED(AEGP_KeyframeIndex);
CHECK_SIGNED(AEGP_KeyframeFlags);
CHECK_SIGNED(AEGP_InstalledEffectKey);
CHECK_SIGNED(AEGP_EffectFlags);
CHECK_SIGNED(AEGP_EffectIndex);
CHECK_SIGNED(AEGP_MaskIndex);
CHECK_SIGNED(AEGP_VertexIndex);
CHECK_SIGNED(AEGP_PulldownPhase);
CHECK_SIGNED(AEGP_LayerDrawStyle);
CHECK_SIGNED(AEGP_FootageSignature);
CHECK_SIGNED(AEGP_Command);
CHECK_UNSIGNED(A_u_long);
CHECK_UNSIGNED(A_u_short);
CHECK_UNSIGNED(A_u_char);
CHECK_UNSIGNED(A_Boolean);
CHECK_UNSIGNED(A_UTF16Char);
CHECK_UNSIGNED(FIEL_Type);
CHECK_UNSIGNED(FIEL_Order);
CHECK_UNSIGNED(AEGP_MemSize);
CHECK_UNSIGNED(AEGP_AlphaFlags);
CHECK_UNSIGNED(AEGP_InterpretationStyle);
CHECK_UNSIGNED(AEGP_HookPriority);
CHECK_UNSIGNED(AEGP_GetPathTypes);

// By its place, because include/ is not on the path when the kit's headers are.
#define RECORD(structure, size, alignment) CHECK_SIZE(structure, size, alignment);
#define FIELD(structure, member, offset, name) CHECK_FIELD(structure, member, offset);
#define FIELD_IF(structure, member, offset, name, type) CHECK_FIELD(structure, member, offset);
#include "../include/records.def"

// Unions inside records.
CHECK_SIZE(decltype(AEGP_StreamCollectionItem::u), 24, 8);
CHECK_SIZE(decltype(AEGP_CollectionItemV2::u), 40, 8);
CHECK_SIZE(decltype(AEGP_CollectionItem::u), 40, 8);

CHECK_SIZE(SPBasicSuite, 56, 8);
CHECK_FIELD(SPBasicSuite, AcquireSuite, 0);
CHECK_FIELD(SPBasicSuite, ReleaseSuite, 8);
CHECK_FIELD(SPBasicSuite, IsEqual, 16);
CHECK_FIELD(SPBasicSuite, AllocateBlock, 24);
CHECK_FIELD(SPBasicSuite, FreeBlock, 32);
CHECK_FIELD(SPBasicSuite, ReallocateBlock, 40);
CHECK_FIELD(SPBasicSuite, Undefined, 48);

CHECK_SIZE(AEGP_StreamVal2, 32, 8);
CHECK_FIELD(AEGP_StreamVal2, four_d, 0);
CHECK_FIELD(AEGP_StreamVal2, three_d, 0);
CHECK_FIELD(AEGP_StreamVal2, two_d, 0);
CHECK_FIELD(AEGP_StreamVal2, one_d, 0);
CHECK_FIELD(AEGP_StreamVal2, color, 0);
CHECK_FIELD(AEGP_StreamVal2, arbH, 0);
CHECK_FIELD(AEGP_StreamVal2, markerP, 0);
CHECK_FIELD(AEGP_StreamVal2, layer_id, 0);
CHECK_FIELD(AEGP_StreamVal2, mask_id, 0);
CHECK_FIELD(AEGP_StreamVal2, mask, 0);
CHECK_FIELD(AEGP_StreamVal2, text_documentH, 0);

CHECK_SIZE(AEGP_StreamValue2, 40, 8);
CHECK_FIELD(AEGP_StreamValue2, streamH, 0);
CHECK_FIELD(AEGP_StreamValue2, val, 8);

CHECK_SIZE(AEGP_StreamVal, 32, 8);
CHECK_FIELD(AEGP_StreamVal, four_d, 0);
CHECK_FIELD(AEGP_StreamVal, three_d, 0);
CHECK_FIELD(AEGP_StreamVal, two_d, 0);
CHECK_FIELD(AEGP_StreamVal, one_d, 0);
CHECK_FIELD(AEGP_StreamVal, color, 0);
CHECK_FIELD(AEGP_StreamVal, arbH, 0);
CHECK_FIELD(AEGP_StreamVal, markerH, 0);
CHECK_FIELD(AEGP_StreamVal, layer_id, 0);
CHECK_FIELD(AEGP_StreamVal, mask_id, 0);
CHECK_FIELD(AEGP_StreamVal, mask, 0);
CHECK_FIELD(AEGP_StreamVal, text_documentH, 0);

CHECK_SIZE(AEGP_StreamValue, 40, 8);
CHECK_FIELD(AEGP_StreamValue, streamH, 0);
CHECK_FIELD(AEGP_StreamValue, val, 8);
