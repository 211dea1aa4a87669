// The fields of each record of the interface: one list for writing and for reading.
//
// A visitor is called with a field's name and the field; `record` is const when it is written.
#pragma once

#include <concepts>
#include <type_traits>

#include "AE_GeneralPlug.h"
#include "shape.h"

namespace host::journal {

template <class Record, class T>
concept Is = std::same_as<std::remove_const_t<Record>, T>;

template <Is<A_Time> R>
void visit_fields(auto& visit, R& record) {
    visit("value", record.value);
    visit("scale", record.scale);
}
template <Is<A_Ratio> R>
void visit_fields(auto& visit, R& record) {
    visit("num", record.num);
    visit("den", record.den);
}
template <Is<A_FloatPoint> R>
void visit_fields(auto& visit, R& record) {
    visit("x", record.x);
    visit("y", record.y);
}
template <Is<A_FloatRect> R>
void visit_fields(auto& visit, R& record) {
    visit("left", record.left);
    visit("top", record.top);
    visit("right", record.right);
    visit("bottom", record.bottom);
}
template <Is<A_Matrix4> R>
void visit_fields(auto& visit, R& record) {
    visit("mat", record.mat);
}
template <Is<A_Version> R>
void visit_fields(auto& visit, R& record) {
    visit("major", record.majorS);
    visit("minor", record.minorS);
}
template <Is<AEGP_ColorVal> R>
void visit_fields(auto& visit, R& record) {
    visit("alpha", record.alphaF);
    visit("red", record.redF);
    visit("green", record.greenF);
    visit("blue", record.blueF);
}
template <Is<AEGP_DownsampleFactor> R>
void visit_fields(auto& visit, R& record) {
    visit("x", record.xS);
    visit("y", record.yS);
}
template <Is<AEGP_ErrReportState> R>
void visit_fields(auto& visit, R& record) {
    visit("reserved", record.reservedAL);
}
template <Is<AEGP_KeyframeEase> R>
void visit_fields(auto& visit, R& record) {
    visit("speed", record.speedF);
    visit("influence", record.influenceF);
}
template <Is<AEGP_LayerTransferMode> R>
void visit_fields(auto& visit, R& record) {
    visit("mode", record.mode);
    visit("flags", record.flags);
    visit("track_matte", record.track_matte);
}
template <Is<AEGP_SoundDataFormat> R>
void visit_fields(auto& visit, R& record) {
    visit("sample_rate", record.sample_rateF);
    visit("encoding", record.encoding);
    visit("bytes_per_sample", record.bytes_per_sampleL);
    visit("num_channels", record.num_channelsL);
}
template <Is<AEGP_FileSequenceImportOptions> R>
void visit_fields(auto& visit, R& record) {
    visit("all_in_folder", record.all_in_folderB);
    visit("force_alphabetical", record.force_alphabeticalB);
    visit("start_frame", record.start_frameL);
    visit("end_frame", record.end_frameL);
}
template <Is<AEGP_FootageLayerKey> R>
void visit_fields(auto& visit, R& record) {
    visit("layer_id", record.layer_idL);
    visit("layer_index", record.layer_indexL);
    visit("name", record.nameAC);
    visit("draw_style", record.layer_draw_style);
}
template <Is<AEGP_TimeDisplay2> R>
void visit_fields(auto& visit, R& record) {
    visit("type", record.time_display_type);
    visit("timebase", record.timebaseC);
    visit("non_drop", record.non_drop_30B);
    visit("frames_per_foot", record.frames_per_footC);
    visit("starting_frame", record.starting_frameL);
    visit("auto_timecode_base", record.auto_timecode_baseB);
}
template <Is<AEGP_TimeDisplay3> R>
void visit_fields(auto& visit, R& record) {
    visit("mode", record.display_mode);
    visit("footage_mode", record.footage_display_mode);
    visit("dropframe", record.display_dropframeB);
    visit("feet_frames", record.use_feet_framesB);
    visit("timebase", record.timebaseC);
    visit("frames_per_foot", record.frames_per_footC);
    visit("frames_mode", record.frames_display_mode);
}

// Packed: its fields may lie where no reference can point.
template <Is<FIEL_Label> R>
void visit_fields(auto& visit, R& record) {
    FIEL_Type type = record.type;
    FIEL_Order order = record.order;
    std::uint32_t signature = record.signature;
    std::int16_t version = record.version;
    std::uint32_t reserved = record.reserved;
    visit("signature", signature);
    visit("version", version);
    visit("type", type);
    visit("order", order);
    visit("reserved", reserved);
    if constexpr (!std::is_const_v<R>) record = {signature, version, type, order, reserved};
}
template <Is<AEGP_AlphaLabel> R>
void visit_fields(auto& visit, R& record) {
    visit("flags", record.flags);
    visit("red", record.redCu);
    visit("green", record.greenCu);
    visit("blue", record.blueCu);
}
template <Is<AEGP_LoopBehavior> R>
void visit_fields(auto& visit, R& record) {
    visit("loops", record.loops);
    visit("reserved", record.reserved);
}
template <Is<AEGP_FootageInterp> R>
void visit_fields(auto& visit, R& record) {
    visit("interlace", record.il);
    visit("alpha", record.al);
    visit("pulldown", record.pd);
    visit("loop", record.loop);
    visit("pixel_aspect", record.pix_aspect_ratio);
    visit("native_fps", record.native_fpsF);
    visit("conform_fps", record.conform_fpsF);
    visit("depth", record.depthL);
    visit("motion", record.motion_dB);
}

template <Is<AEGP_LayerCollectionItem> R>
void visit_fields(auto& visit, R& record) {
    visit("layer", record.layerH);
}
template <Is<AEGP_MaskCollectionItem> R>
void visit_fields(auto& visit, R& record) {
    visit("layer", record.layerH);
    visit("index", record.index);
}
template <Is<AEGP_EffectCollectionItem> R>
void visit_fields(auto& visit, R& record) {
    visit("layer", record.layerH);
    visit("index", record.index);
}
template <Is<AEGP_LayerStreamCollectionItem> R>
void visit_fields(auto& visit, R& record) {
    visit("layer", record.layerH);
    visit("stream", record.layer_stream);
}
template <Is<AEGP_MaskStreamCollectionItem> R>
void visit_fields(auto& visit, R& record) {
    visit("mask", record.mask);
    visit("stream", record.mask_stream);
}
template <Is<AEGP_EffectStreamCollectionItem> R>
void visit_fields(auto& visit, R& record) {
    visit("effect", record.effect);
    visit("param", record.param_index);
}
template <Is<AEGP_StreamCollectionItem> R>
void visit_fields(auto& visit, R& record) {
    visit("type", record.type);
    if (record.type == AEGP_StreamCollectionItemType_LAYER) visit("layer_stream", record.u.layer_stream);
    if (record.type == AEGP_StreamCollectionItemType_MASK) visit("mask_stream", record.u.mask_stream);
    if (record.type == AEGP_StreamCollectionItemType_EFFECT) visit("effect_stream", record.u.effect_stream);
}
template <Is<AEGP_MaskVertexCollectionItem> R>
void visit_fields(auto& visit, R& record) {
    visit("mask", record.mask_sel);
    visit("index", record.index);
}
template <Is<AEGP_KeyframeCollectionItem> R>
void visit_fields(auto& visit, R& record) {
    visit("stream", record.stream_coll);
    visit("index", record.index);
}
// Only the member that the type names; what the others hold is nobody's business.
template <Is<AEGP_CollectionItemV2> R>
void visit_fields(auto& visit, R& record) {
    visit("type", record.type);
    switch (record.type) {
        case AEGP_CollectionItemType_LAYER:
            visit("layer", record.u.layer);
            break;
        case AEGP_CollectionItemType_MASK:
            visit("mask", record.u.mask);
            break;
        case AEGP_CollectionItemType_EFFECT:
            visit("effect", record.u.effect);
            break;
        case AEGP_CollectionItemType_STREAM:
            visit("stream", record.u.stream);
            break;
        case AEGP_CollectionItemType_KEYFRAME:
            visit("keyframe", record.u.keyframe);
            break;
        case AEGP_CollectionItemType_MASK_VERTEX:
            visit("mask_vertex", record.u.mask_vertex);
            break;
        case AEGP_CollectionItemType_STREAMREF:
            visit("stream_ref", record.stream_refH);
            break;
        default:
            break;
    }
}

// The member of a stream's value that holds.
template <Is<AEGP_StreamVal2> R>
void visit_member(auto& visit, R& value, Shape shape) {
    switch (shape) {
        case Shape::none:
            break;
        case Shape::one_d:
            visit("one_d", value.one_d);
            break;
        case Shape::two_d: {
            visit("x", value.two_d.x);
            visit("y", value.two_d.y);
            break;
        }
        case Shape::three_d:
            visit("x", value.three_d.x);
            visit("y", value.three_d.y);
            visit("z", value.three_d.z);
            break;
        case Shape::color:
            visit("color", value.color);
            break;
        case Shape::layer_id:
            visit("layer_id", value.layer_id);
            break;
        case Shape::mask_id:
            visit("mask_id", value.mask_id);
            break;
    }
}

}  // namespace host::journal
