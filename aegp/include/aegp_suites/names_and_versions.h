// Names and version integers for AcquireSuite. The integer is rarely the number in the table's name.
#pragma once

#define kAEGPCommandSuite "AEGP Command Suite"
#define kAEGPCommandSuiteVersion1 1

#define kAEGPRegisterSuite "AEGP Register Suite"
#define kAEGPRegisterSuiteVersion5 6

#define kAEGPUtilitySuite "AEGP Utility Suite"
#define kAEGPUtilitySuiteVersion1 3
#define kAEGPUtilitySuiteVersion2 5
#define kAEGPUtilitySuiteVersion3 7
#define kAEGPUtilitySuiteVersion4 10
#define kAEGPUtilitySuiteVersion5 11
#define kAEGPUtilitySuiteVersion6 13

#define kAEGPMemorySuite "AEGP Memory Suite"
#define kAEGPMemorySuiteVersion1 1

#define kAEGPCollectionSuite "AEGP Collection Suite"
#define kAEGPCollectionSuiteVersion1 1
#define kAEGPCollectionSuiteVersion2 2

#define kAEGPItemSuite "AEGP Item Suite"
#define kAEGPItemSuiteVersion1 3
#define kAEGPItemSuiteVersion2 4
#define kAEGPItemSuiteVersion3 5
#define kAEGPItemSuiteVersion4 6
#define kAEGPItemSuiteVersion5 7
#define kAEGPItemSuiteVersion6 10
#define kAEGPItemSuiteVersion7 11
#define kAEGPItemSuiteVersion8 13
#define kAEGPItemSuiteVersion9 14

#define kAEGPProjSuite "AEGP Proj Suite"
#define kAEGPProjSuiteVersion5 8
#define kAEGPProjSuiteVersion6 9

#define kAEGPCompSuite "AEGP Comp Suite"
#define kAEGPCompSuiteVersion1 4
#define kAEGPCompSuiteVersion2 6
#define kAEGPCompSuiteVersion3 7
#define kAEGPCompSuiteVersion4 9
#define kAEGPCompSuiteVersion5 11
#define kAEGPCompSuiteVersion6 14
#define kAEGPCompSuiteVersion7 15
#define kAEGPCompSuiteVersion8 18
#define kAEGPCompSuiteVersion9 19
#define kAEGPCompSuiteVersion10 21
#define kAEGPCompSuiteVersion11 25
#define kAEGPCompSuiteVersion12 26

#define kAEGPLayerSuite "AEGP Layer Suite"
#define kAEGPLayerSuiteVersion1 5
#define kAEGPLayerSuiteVersion2 7
#define kAEGPLayerSuiteVersion3 8
#define kAEGPLayerSuiteVersion4 10
#define kAEGPLayerSuiteVersion5 11
#define kAEGPLayerSuiteVersion6 12
#define kAEGPLayerSuiteVersion7 13
#define kAEGPLayerSuiteVersion8 14
#define kAEGPLayerSuiteVersion9 15

#define kAEGPFootageSuite "AEGP Footage Suite"
#define kAEGPFootageSuiteVersion5 11

#define kAEGPStreamSuite "AEGP Stream Suite"
#define kAEGPStreamSuiteVersion1 4
#define kAEGPStreamSuiteVersion2 7
#define kAEGPStreamSuiteVersion3 8
#define kAEGPStreamSuiteVersion4 9
#define kAEGPStreamSuiteVersion5 10
#define kAEGPStreamSuiteVersion6 11

#define kAEGPKeyframeSuite "AEGP Keyframe Suite"
#define kAEGPKeyframeSuiteVersion1 1
#define kAEGPKeyframeSuiteVersion2 2
#define kAEGPKeyframeSuiteVersion3 3
#define kAEGPKeyframeSuiteVersion4 4
#define kAEGPKeyframeSuiteVersion5 5

#define kAEGPEffectSuite "AEGP Effect Suite"
#define kAEGPEffectSuiteVersion1 1
#define kAEGPEffectSuiteVersion2 2
#define kAEGPEffectSuiteVersion3 3
#define kAEGPEffectSuiteVersion4 4
#define kAEGPEffectSuiteVersion5 5
