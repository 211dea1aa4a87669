// What this plug-in promises when calls fail.
#include <stdexcept>
#include <string>

#include "promise.h"

namespace faults {
namespace {

using host::suites::HandleKind;

// Entry point and menu
constexpr Part kRegistering = "registering";
constexpr Part kReport = "report of a failed start";
constexpr Part kMenu = "menu update";
// Command, in the order of a run
constexpr Part kDialog = "dialog";
constexpr Part kDialogUnlock = "dialog's answer unlocked";
constexpr Part kTooLong = "alert about the prefix";
constexpr Part kGroupStart = "start of the undo group";
constexpr Part kChoosing = "selection";
constexpr Part kMoving = "moving out";
constexpr Part kSeeding = "seeds";
constexpr Part kEffectWalkStart = "first layer for effects";
constexpr Part kEffectWalk = "next layer for effects";
constexpr Part kEffects = "effects of one layer";
constexpr Part kPrefixRead = "name for the prefix";
constexpr Part kRenameWalkStart = "first layer to rename";
constexpr Part kRenameWalk = "next layer to rename";
constexpr Part kRenameRead = "names around a rename";
constexpr Part kRename = "rename";
constexpr Part kRepair = "repair of expressions";
constexpr Part kPlacing = "placing and clearing up";
constexpr Part kGroupEnd = "end of the undo group";
constexpr Part kClosingAlert = "closing alert";

// One line for each kind of place in which a call can fail.
std::vector<Rule> rules() {
    return {
        // A failed start is told to the user, and whether that succeeds changes nothing.
        {kRegistering, Code::returned, {kReport}},
        {.part = kReport, .code = Code::dropped, .parts = {}, .missing_suite_wins = true},
        {kMenu, Code::returned, {}},
        // No group is open yet, and nothing was changed.
        {kDialog, Code::returned, {}},
        {kTooLong, Code::returned, {}},
        // The answer is known, so the run goes through its motions, of which only the group's end is no guarded step.
        {kDialogUnlock, Code::returned, {kGroupEnd}},
        {kGroupStart, Code::returned, {kGroupEnd}},
        {kChoosing, Code::returned, {kGroupEnd}},
        // The name for the prefix is read whatever happened before.
        {kMoving, Code::returned, {kPrefixRead, kGroupEnd}},
        {kSeeding, Code::returned, {kPrefixRead, kGroupEnd}},
        // A layer that refuses an effect goes without the rest of its effects; the others get theirs.
        {kEffectWalkStart, Code::returned, {kPrefixRead, kGroupEnd}},
        {kEffectWalk, Code::returned, {kEffects, kPrefixRead, kGroupEnd}, "AEGP_GetLayerNumEffects"},
        {kEffects, Code::dropped, {kEffects}},
        // Without the name and without a typed prefix there is nothing to rename.
        {kPrefixRead, Code::dropped, {kPrefixRead, kRenameWalkStart, kRenameWalk, kRenameRead, kRename, kRepair}},
        // After a failed rename the walk goes to its end, reading names and repairing.
        {kRenameWalkStart, Code::returned, {kGroupEnd}},
        {kRenameWalk, Code::returned, {kRenameRead, kRepair, kGroupEnd}, "AEGP_ExecuteScript"},
        {kRename, Code::returned, {kRenameRead, kRepair, kGroupEnd}, "AEGP_ExecuteScript"},
        {kRenameRead, Code::dropped, {kRenameRead}},
        {kRepair, Code::dropped, {}},
        {kPlacing, Code::returned, {kGroupEnd}},
        {kGroupEnd, Code::returned, {}},
        {kClosingAlert, Code::returned, {}},
    };
}

class EntryReader : public PartReader {
  public:
    Part part_of(const MadeCall& call) override { return call.is("AEGP_ReportInfo") ? kReport : kRegistering; }
    Part part_of_acquisition(std::string_view accessor) override {
        return accessor == "UtilitySuite3" ? kReport : kRegistering;
    }
};

class MenuReader : public PartReader {
  public:
    Part part_of(const MadeCall&) override { return kMenu; }
    Part part_of_acquisition(std::string_view) override { return kMenu; }
};

// Knows a run by calls that stand at one place only.
class CommandReader : public PartReader {
  public:
    explicit CommandReader(const DialogChoices& choices) : choices_(choices) {}

    Part part_of(const MadeCall& call) override {
        const Part part = read(call);
        last_function_ = call.function;
        return part;
    }

    Part part_of_acquisition(std::string_view accessor) override {
        const bool reads_name = accessor == "LayerSuite5" && choices_.prepend_name;
        switch (state_) {
            case State::dialog:
                return kDialog;
            case State::choosing:
                return accessor == "LayerSuite5" && last_function_ == "AEGP_GetItemType" ? kMoving : kChoosing;
            case State::moving:
            case State::copied:
            case State::restored:
            case State::transform:
                if (failed_ && reads_name) return kPrefixRead;
                if (state_ == State::copied && (accessor == "StreamSuite4" || accessor == "MemorySuite1"))
                    return kSeeding;
                return kMoving;
            case State::effects:
                if (reads_name) return kPrefixRead;
                if (accessor == "CollectionSuite2") return renames() ? kRenameWalkStart : kPlacing;
                return accessor.starts_with("LayerSuite") ? kPlacing : kEffects;
            case State::named:
                return accessor == "CollectionSuite2" ? kRenameWalkStart : kPlacing;
            case State::renaming:
                if (accessor == "LayerSuite5") return kRenameRead;
                if (accessor == "UtilitySuite6") return kRepair;
                return accessor == "LayerSuite6" && !renamed_ ? kRename : kPlacing;
            case State::placing:
                return kPlacing;
            case State::ended:
                return kClosingAlert;
        }
        throw std::logic_error("no such state");
    }

    void note_failure(Part part) override {
        failed_ = true;
        if (state_ == State::choosing && part == kMoving) state_ = State::moving;  // its first suite was refused
    }
    int pass() const override { return pass_; }

  private:
    enum class State {
        dialog,
        choosing,
        moving,
        copied,
        restored,
        transform,
        effects,
        named,
        renaming,
        placing,
        ended
    };

    bool renames() const { return choices_.prepend_name || !choices_.prefix.empty(); }

    Part read(const MadeCall& call) {
        if (call.is("AEGP_EndUndoGroup")) {
            state_ = State::ended;
            return kGroupEnd;
        }
        if (state_ == State::ended) return kClosingAlert;
        if (state_ == State::dialog) return read_dialog(call);
        // The last step of one layer's pass; the next call belongs to the selection.
        if (state_ == State::placing && call.is("AEGP_DisposeCollection")) {
            state_ = State::choosing;
            return kPlacing;
        }
        if (call.is("AEGP_GetLayerName")) return read_name();
        if (call.is("LayerSuite6", "AEGP_GetLayerIndex")) state_ = State::placing;

        switch (state_) {
            case State::choosing:
                return kChoosing;
            case State::moving:
                if (call.is("AEGP_NewCollection")) has_collection_ = true;
                if (call.is("AEGP_ExecuteScript")) state_ = State::copied;
                return kMoving;
            case State::copied:
                if (call.is("CompSuite4", "AEGP_GetCompFromItem")) state_ = State::restored;
                return call.accessor == "StreamSuite4" || call.accessor == "MemorySuite1" ? kSeeding : kMoving;
            case State::restored:
                if (call.is("LayerSuite4", "AEGP_GetLayerInPoint")) state_ = State::transform;
                if (!choices_.copy_attributes && call.is("AEGP_GetCollectionNumItems")) return start_renaming();
                return kMoving;
            case State::transform:
                if (!call.is("AEGP_GetCollectionNumItems")) return kMoving;
                state_ = State::effects;
                walked_ = 0;
                return kEffectWalkStart;
            case State::effects:
                if (call.is("AEGP_GetCollectionNumItems")) return start_renaming();
                if (call.is("AEGP_GetCollectionItemByIndex")) return walked_++ == 0 ? kEffectWalkStart : kEffectWalk;
                return kEffects;
            case State::named:
                return start_renaming();
            case State::renaming:
                return read_renaming(call);
            default:
                return kPlacing;
        }
    }

    Part read_dialog(const MadeCall& call) {
        if (call.is("AEGP_StartUndoGroup")) {
            state_ = State::choosing;
            return kGroupStart;
        }
        if (call.is("AEGP_ExecuteScript")) return scripts_++ == 0 ? kDialog : kTooLong;
        if (call.is("AEGP_UnlockMemHandle") && choices_.start_a_run()) return kDialogUnlock;
        return kDialog;
    }

    Part read_name() {
        if (state_ == State::renaming) return kRenameRead;
        if (state_ == State::choosing) {
            state_ = State::moving;
            has_collection_ = false;
            ++pass_;
            return kMoving;
        }
        if (!choices_.prepend_name || (!failed_ && !has_collection_)) return kMoving;
        if (!failed_) state_ = State::named;
        return kPrefixRead;
    }

    Part start_renaming() {
        state_ = State::renaming;
        walked_ = 0;
        return kRenameWalkStart;
    }

    Part read_renaming(const MadeCall& call) {
        if (call.is("AEGP_GetCollectionItemByIndex")) {
            renamed_ = false;
            return walked_++ == 0 ? kRenameWalkStart : kRenameWalk;
        }
        if (call.is("AEGP_ExecuteScript")) return kRepair;
        renamed_ = true;
        return kRename;
    }

    const DialogChoices& choices_;
    State state_ = State::dialog;
    std::string_view last_function_;
    bool failed_ = false;
    bool has_collection_ = false;
    bool renamed_ = false;  // the layer that the walk is at
    int scripts_ = 0;
    int walked_ = 0;
    int pass_ = 0;
};

std::unique_ptr<PartReader> make_reader(const Scenario& scenario) {
    switch (scenario.door) {
        case VisitedDoor::entry_point:
            return std::make_unique<EntryReader>();
        case VisitedDoor::menu_update:
            return std::make_unique<MenuReader>();
        case VisitedDoor::command:
            return std::make_unique<CommandReader>(scenario.choices);
    }
    throw std::logic_error("no such door");
}

}  // namespace

const Rule& Promise::rule(Part part) const {
    for (const Rule& one : rules)
        if (one.part == part) return one;
    throw std::logic_error("no rule for \"" + std::string(part) + "\"");
}

Promise exflate_promise() {
    return {
        .rules = rules(),
        .left_to_host = {{kDialog, HandleKind::memory},        // the dialog's answer
                         {kTooLong, HandleKind::memory},       // that of the alert
                         {kChoosing, HandleKind::collection},  // the selection
                         {kSeeding, HandleKind::stream}},
        .frees_locked_memory_in = {kSeeding},
        .group_end = kGroupEnd,
        .reader = make_reader,
    };
}

}  // namespace faults
