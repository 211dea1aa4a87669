// Behaviour of the application that no public source settles, each a named choice with this host's default.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace host::model {

enum class SelectionOrder { order_of_selecting, top_to_bottom };
enum class ReorderMeaning { final_index, insert_before };
enum class IllegalTrim { clamp, error };
enum class InapplicableStream { hidden_default, error };
enum class UnknownTimeMode { comp_time, error };
enum class MissingExpression { null_handle, empty_text };
enum class SeparatedPosition { leader_has_no_keys, leader_is_combined };

struct HostRules {
    // Menu and undo
    bool disable_menu_items_before_update = false;
    bool empty_undo_group_makes_a_step = false;

    // Time and items
    std::int64_t time_scale = 120'000;  // scale of every A_Time handed out; a composition may override it
    // Selection
    SelectionOrder selection_order = SelectionOrder::order_of_selecting;

    // A new null: its source item, its place
    bool null_layer_gets_own_name = false;  // else only its source is named
    int null_size = 100;                    // pixels, square
    std::string solids_folder_name = "Solids";
    std::array<double, 3> null_color = {1, 1, 1};
    double null_opacity = 100;
    bool new_null_is_selected = false;

    // Layers
    bool cut_names_at_character = false;  // else at byte 31, which may split a character
    ReorderMeaning reorder_meaning = ReorderMeaning::final_index;
    IllegalTrim illegal_trim = IllegalTrim::clamp;
    bool locked_layers_refuse_edits = false;
    bool suite_parenting_compensates = false;
    bool deleting_a_parent_compensates = true;
    bool copies_get_numbered_names = false;
    bool copies_keep_links_to_present_partners = false;  // parent, matte, layer parameters; else none
    bool mattes_by_position = true;  // what is shaped by the layer above it always is; else by that layer, a link

    // Streams and keyframes
    InapplicableStream inapplicable_stream = InapplicableStream::hidden_default;
    UnknownTimeMode unknown_time_mode = UnknownTimeMode::comp_time;
    bool strict_no_data = false;                       // value calls on streams without data fail
    bool keyframe_setters_disturb_each_other = false;  // setting ease forces bezier, setting tangents drops auto-bezier
    SeparatedPosition separated_position = SeparatedPosition::leader_has_no_keys;

    // Expressions and scripts
    MissingExpression missing_expression = MissingExpression::null_handle;
    bool broken_expressions_recover = true;
    bool failing_script_is_an_error = false;
};

}  // namespace host::model
