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

CHECK_SIZE(A_Time, 8, 4);
CHECK_FIELD(A_Time, value, 0);
CHECK_FIELD(A_Time, scale, 4);

CHECK_SIZE(A_Ratio, 8, 4);
CHECK_FIELD(A_Ratio, num, 0);
CHECK_FIELD(A_Ratio, den, 4);

CHECK_SIZE(A_FloatPoint, 16, 8);
CHECK_FIELD(A_FloatPoint, x, 0);
CHECK_FIELD(A_FloatPoint, y, 8);

CHECK_SIZE(A_FloatRect, 32, 8);
CHECK_FIELD(A_FloatRect, left, 0);
CHECK_FIELD(A_FloatRect, top, 8);
CHECK_FIELD(A_FloatRect, right, 16);
CHECK_FIELD(A_FloatRect, bottom, 24);

CHECK_SIZE(A_Matrix4, 128, 8);
CHECK_FIELD(A_Matrix4, mat, 0);

CHECK_SIZE(A_Color, 32, 8);
CHECK_FIELD(A_Color, alpha, 0);
CHECK_FIELD(A_Color, red, 8);
CHECK_FIELD(A_Color, green, 16);
CHECK_FIELD(A_Color, blue, 24);

CHECK_SIZE(A_Version, 4, 2);
CHECK_FIELD(A_Version, majorS, 0);
CHECK_FIELD(A_Version, minorS, 2);

CHECK_SIZE(SPBasicSuite, 56, 8);
CHECK_FIELD(SPBasicSuite, AcquireSuite, 0);
CHECK_FIELD(SPBasicSuite, ReleaseSuite, 8);
CHECK_FIELD(SPBasicSuite, IsEqual, 16);
CHECK_FIELD(SPBasicSuite, AllocateBlock, 24);
CHECK_FIELD(SPBasicSuite, FreeBlock, 32);
CHECK_FIELD(SPBasicSuite, ReallocateBlock, 40);
CHECK_FIELD(SPBasicSuite, Undefined, 48);

CHECK_SIZE(FIEL_Label, 18, 2);
CHECK_FIELD(FIEL_Label, signature, 0);
CHECK_FIELD(FIEL_Label, version, 4);
CHECK_FIELD(FIEL_Label, type, 6);
CHECK_FIELD(FIEL_Label, order, 10);
CHECK_FIELD(FIEL_Label, reserved, 14);

CHECK_SIZE(AEGP_ColorVal, 32, 8);
CHECK_FIELD(AEGP_ColorVal, alphaF, 0);
CHECK_FIELD(AEGP_ColorVal, redF, 8);
CHECK_FIELD(AEGP_ColorVal, greenF, 16);
CHECK_FIELD(AEGP_ColorVal, blueF, 24);

CHECK_SIZE(AEGP_TimeDisplay2, 12, 4);
CHECK_FIELD(AEGP_TimeDisplay2, time_display_type, 0);
CHECK_FIELD(AEGP_TimeDisplay2, timebaseC, 1);
CHECK_FIELD(AEGP_TimeDisplay2, non_drop_30B, 2);
CHECK_FIELD(AEGP_TimeDisplay2, frames_per_footC, 3);
CHECK_FIELD(AEGP_TimeDisplay2, starting_frameL, 4);
CHECK_FIELD(AEGP_TimeDisplay2, auto_timecode_baseB, 8);

CHECK_SIZE(AEGP_TimeDisplay3, 7, 1);
CHECK_FIELD(AEGP_TimeDisplay3, display_mode, 0);
CHECK_FIELD(AEGP_TimeDisplay3, footage_display_mode, 1);
CHECK_FIELD(AEGP_TimeDisplay3, display_dropframeB, 2);
CHECK_FIELD(AEGP_TimeDisplay3, use_feet_framesB, 3);
CHECK_FIELD(AEGP_TimeDisplay3, timebaseC, 4);
CHECK_FIELD(AEGP_TimeDisplay3, frames_per_footC, 5);
CHECK_FIELD(AEGP_TimeDisplay3, frames_display_mode, 6);

CHECK_SIZE(AEGP_SoundDataFormat, 24, 8);
CHECK_FIELD(AEGP_SoundDataFormat, sample_rateF, 0);
CHECK_FIELD(AEGP_SoundDataFormat, encoding, 8);
CHECK_FIELD(AEGP_SoundDataFormat, bytes_per_sampleL, 12);
CHECK_FIELD(AEGP_SoundDataFormat, num_channelsL, 16);

CHECK_SIZE(AEGP_DownsampleFactor, 4, 2);
CHECK_FIELD(AEGP_DownsampleFactor, xS, 0);
CHECK_FIELD(AEGP_DownsampleFactor, yS, 2);

CHECK_SIZE(AEGP_LayerTransferMode, 12, 4);
CHECK_FIELD(AEGP_LayerTransferMode, mode, 0);
CHECK_FIELD(AEGP_LayerTransferMode, flags, 4);
CHECK_FIELD(AEGP_LayerTransferMode, track_matte, 8);

CHECK_SIZE(AEGP_TwoDVal, 16, 8);
CHECK_FIELD(AEGP_TwoDVal, x, 0);
CHECK_FIELD(AEGP_TwoDVal, y, 8);

CHECK_SIZE(AEGP_ThreeDVal, 24, 8);
CHECK_FIELD(AEGP_ThreeDVal, x, 0);
CHECK_FIELD(AEGP_ThreeDVal, y, 8);
CHECK_FIELD(AEGP_ThreeDVal, z, 16);

CHECK_SIZE(AEGP_KeyframeEase, 16, 8);
CHECK_FIELD(AEGP_KeyframeEase, speedF, 0);
CHECK_FIELD(AEGP_KeyframeEase, influenceF, 8);

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

CHECK_SIZE(AEGP_AlphaLabel, 8, 4);
CHECK_FIELD(AEGP_AlphaLabel, flags, 0);
CHECK_FIELD(AEGP_AlphaLabel, redCu, 4);
CHECK_FIELD(AEGP_AlphaLabel, greenCu, 5);
CHECK_FIELD(AEGP_AlphaLabel, blueCu, 6);

CHECK_SIZE(AEGP_LoopBehavior, 8, 4);
CHECK_FIELD(AEGP_LoopBehavior, loops, 0);
CHECK_FIELD(AEGP_LoopBehavior, reserved, 4);

CHECK_SIZE(AEGP_FootageInterp, 72, 8);
CHECK_FIELD(AEGP_FootageInterp, il, 0);
CHECK_FIELD(AEGP_FootageInterp, al, 20);
CHECK_FIELD(AEGP_FootageInterp, pd, 28);
CHECK_FIELD(AEGP_FootageInterp, loop, 32);
CHECK_FIELD(AEGP_FootageInterp, pix_aspect_ratio, 40);
CHECK_FIELD(AEGP_FootageInterp, native_fpsF, 48);
CHECK_FIELD(AEGP_FootageInterp, conform_fpsF, 56);
CHECK_FIELD(AEGP_FootageInterp, depthL, 64);
CHECK_FIELD(AEGP_FootageInterp, motion_dB, 68);

CHECK_SIZE(AEGP_FootageLayerKey, 76, 4);
CHECK_FIELD(AEGP_FootageLayerKey, layer_idL, 0);
CHECK_FIELD(AEGP_FootageLayerKey, layer_indexL, 4);
CHECK_FIELD(AEGP_FootageLayerKey, nameAC, 8);
CHECK_FIELD(AEGP_FootageLayerKey, layer_draw_style, 72);

CHECK_SIZE(AEGP_FileSequenceImportOptions, 12, 4);
CHECK_FIELD(AEGP_FileSequenceImportOptions, all_in_folderB, 0);
CHECK_FIELD(AEGP_FileSequenceImportOptions, force_alphabeticalB, 1);
CHECK_FIELD(AEGP_FileSequenceImportOptions, start_frameL, 4);
CHECK_FIELD(AEGP_FileSequenceImportOptions, end_frameL, 8);

CHECK_SIZE(AEGP_ErrReportState, 48, 4);
CHECK_FIELD(AEGP_ErrReportState, reservedAL, 0);

CHECK_SIZE(AEGP_LayerCollectionItem, 8, 8);
CHECK_FIELD(AEGP_LayerCollectionItem, layerH, 0);

CHECK_SIZE(AEGP_MaskCollectionItem, 16, 8);
CHECK_FIELD(AEGP_MaskCollectionItem, layerH, 0);
CHECK_FIELD(AEGP_MaskCollectionItem, index, 8);

CHECK_SIZE(AEGP_EffectCollectionItem, 16, 8);
CHECK_FIELD(AEGP_EffectCollectionItem, layerH, 0);
CHECK_FIELD(AEGP_EffectCollectionItem, index, 8);

CHECK_SIZE(AEGP_MaskStreamCollectionItem, 24, 8);
CHECK_FIELD(AEGP_MaskStreamCollectionItem, mask, 0);
CHECK_FIELD(AEGP_MaskStreamCollectionItem, mask_stream, 16);

CHECK_SIZE(AEGP_EffectStreamCollectionItem, 24, 8);
CHECK_FIELD(AEGP_EffectStreamCollectionItem, effect, 0);
CHECK_FIELD(AEGP_EffectStreamCollectionItem, param_index, 16);

CHECK_SIZE(AEGP_LayerStreamCollectionItem, 16, 8);
CHECK_FIELD(AEGP_LayerStreamCollectionItem, layerH, 0);
CHECK_FIELD(AEGP_LayerStreamCollectionItem, layer_stream, 8);

CHECK_SIZE(AEGP_StreamCollectionItem, 32, 8);
CHECK_FIELD(AEGP_StreamCollectionItem, type, 0);
CHECK_FIELD(AEGP_StreamCollectionItem, u, 8);
CHECK_SIZE(decltype(AEGP_StreamCollectionItem::u), 24, 8);
CHECK_FIELD(AEGP_StreamCollectionItem, u.layer_stream, 8);
CHECK_FIELD(AEGP_StreamCollectionItem, u.mask_stream, 8);
CHECK_FIELD(AEGP_StreamCollectionItem, u.effect_stream, 8);

CHECK_SIZE(AEGP_MaskVertexCollectionItem, 24, 8);
CHECK_FIELD(AEGP_MaskVertexCollectionItem, mask_sel, 0);
CHECK_FIELD(AEGP_MaskVertexCollectionItem, index, 16);

CHECK_SIZE(AEGP_KeyframeCollectionItem, 40, 8);
CHECK_FIELD(AEGP_KeyframeCollectionItem, stream_coll, 0);
CHECK_FIELD(AEGP_KeyframeCollectionItem, index, 32);

CHECK_SIZE(AEGP_CollectionItemV2, 56, 8);
CHECK_FIELD(AEGP_CollectionItemV2, type, 0);
CHECK_FIELD(AEGP_CollectionItemV2, u, 8);
CHECK_SIZE(decltype(AEGP_CollectionItemV2::u), 40, 8);
CHECK_FIELD(AEGP_CollectionItemV2, u.layer, 8);
CHECK_FIELD(AEGP_CollectionItemV2, u.mask, 8);
CHECK_FIELD(AEGP_CollectionItemV2, u.effect, 8);
CHECK_FIELD(AEGP_CollectionItemV2, u.stream, 8);
CHECK_FIELD(AEGP_CollectionItemV2, u.mask_vertex, 8);
CHECK_FIELD(AEGP_CollectionItemV2, u.keyframe, 8);
CHECK_FIELD(AEGP_CollectionItemV2, stream_refH, 48);

CHECK_SIZE(AEGP_MarkerVal, 1344, 1);
CHECK_FIELD(AEGP_MarkerVal, nameAC, 0);
CHECK_FIELD(AEGP_MarkerVal, urlAC, 64);
CHECK_FIELD(AEGP_MarkerVal, targetAC, 1088);
CHECK_FIELD(AEGP_MarkerVal, chapterAC, 1216);

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

CHECK_SIZE(AEGP_CollectionItem, 48, 8);
CHECK_FIELD(AEGP_CollectionItem, type, 0);
CHECK_FIELD(AEGP_CollectionItem, u, 8);
CHECK_SIZE(decltype(AEGP_CollectionItem::u), 40, 8);
CHECK_FIELD(AEGP_CollectionItem, u.layer, 8);
CHECK_FIELD(AEGP_CollectionItem, u.mask, 8);
CHECK_FIELD(AEGP_CollectionItem, u.effect, 8);
CHECK_FIELD(AEGP_CollectionItem, u.stream, 8);
CHECK_FIELD(AEGP_CollectionItem, u.mask_vertex, 8);
CHECK_FIELD(AEGP_CollectionItem, u.keyframe, 8);
