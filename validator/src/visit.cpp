// One life of a plug-in in a process of its own.
#include "validator/visit.h"

#include <algorithm>
#include <deque>
#include <memory>

#include "base/files.h"
#include "journal/writer.h"
#include "packing.h"
#include "project_text.h"
#include "runner/session.h"
#include "suites/slot_facts.h"

namespace validator {
namespace {

using host::base::ChildProcess;
using host::suites::kPluginFunctionCount;

// How far the plug-in came, as a number that the parent sees even when the process is gone.
class Place : public host::suites::Observer {
  public:
    explicit Place(std::atomic<std::size_t>& number) : number_(number) {}

    void entering(const host::suites::PluginCall& call) override {
        function_ = static_cast<std::size_t>(call.function) + 1;
        last_call_ = 0;
        tell(false);
    }
    void left(const host::suites::PluginCall&, A_Err, bool) override {
        function_ = kAtHost;
        tell(false);
    }
    std::optional<A_Err> before(const host::suites::SuiteCall& call) override {
        slot_ = static_cast<std::size_t>(call.slot() + 1);
        last_call_ = call.number();
        tell(true);
        return std::nullopt;
    }
    void after(const host::suites::SuiteCall&) override { tell(false); }

    static std::string words(std::size_t number) {
        constexpr const char* kNames[kPluginFunctionCount] = {"entry point", "update-menu hook", "command hook",
                                                              "idle hook", "death hook"};
        const std::size_t function = number & 0xFF;
        if (function == 0) return "while it was being loaded";
        if (function == kUnloading) return "while it was being unloaded";
        if (function == kAtHost) return VisitRecord::kBetweenFunctions;
        const std::size_t slot = number >> 8 & 0xFFFF;
        const std::size_t call = number >> 32;
        const bool is_inside = (number >> 24 & 1) != 0;
        const std::string in = std::string("in its ") + kNames[function - 1];
        if (call == 0) return in + ", before its first call";
        const std::string name = slot == 0
                                     ? std::string("a call of the basic suite")
                                     : host::suites::full_name(host::suites::slot_facts(static_cast<int>(slot) - 1));
        return in + (is_inside ? ", inside " : ", after ") + name;
    }

    static constexpr std::size_t kAtHost = 0xFF;
    static constexpr std::size_t kUnloading = 0xFE;

  private:
    void tell(bool is_inside) {
        number_ = function_ | slot_ << 8 | std::size_t{is_inside} << 24 | std::size_t{last_call_} << 32;
    }

    std::atomic<std::size_t>& number_;
    std::size_t function_ = 0;
    std::size_t slot_ = 0;
    std::uint64_t last_call_ = 0;
};

class VisitJournal {
  public:
    explicit VisitJournal(const std::string& file) {
        if (file.empty()) return;
        file_ = std::make_unique<host::base::LineFile>(file);
        writer_ = std::make_unique<host::journal::JournalWriter>([this](std::string_view line) { file_->write(line); });
    }
    void observe(host::runner::Session& session, const std::string& name) {
        if (!writer_) return;
        writer_->begin_session(name);
        session.suites().add_observer(*writer_);
    }
    void finish() {
        if (writer_) writer_->finish();
    }

  private:
    std::unique_ptr<host::base::LineFile> file_;
    std::unique_ptr<host::journal::JournalWriter> writer_;
};

void bring_other_comp_to_front(host::model::Project& project) {
    const host::model::Comp* in_front = project.open_comp();
    for (host::model::Comp* comp : project.comps()) {
        if (comp == in_front || comp->layer_count() == 0) continue;
        project.set_active_panel(host::model::ActivePanel::timeline);
        project.open_comp(comp);
        comp->select({&comp->layer_at(0)});
        return;
    }
}

class Visitor {
  public:
    Visitor(const host::runner::PluginModule& module, const VisitPlan& plan, std::atomic<std::size_t>& place)
        : plan_(plan),
          stage_(plan.situation->build()),
          dialogs_(plan.situation->dialogs()),
          session_(stage_->project(), settings_, *dialogs_),
          place_(place),
          fault_(plan.fault),
          journal_(plan.journal),
          module_(module) {
        journal_.observe(session_, plan.situation->name);
        session_.suites().add_observer(place_);
        session_.suites().add_observer(log_);
        session_.suites().add_observer(fault_);
    }

    void visit(VisitRecord& record) {
        project().undo().clear();
        text_ = project_text(project());
        record.start = outcome_of(session_.start(module_), text_);
        if (record.start.error == A_Err_NONE) {
            for (const Act act : plan_.acts) record.outcomes.push_back(perform(act));
        }
        read_registered(record.registered);
        read_ledger(record);
        for (const auto& suite : session_.suites().suites_held()) record.held.push_back(suite.structure);
        if (const auto* scripted = dynamic_cast<host::scriptui::ScriptedDriver*>(dialogs_.get()))
            record.dialog_problems = scripted->problems();
        journal_.finish();
    }

  private:
    host::model::Project& project() { return stage_->project(); }

    Outcome perform(Act act) {
        const std::vector<std::string> before = std::move(text_);
        switch (act) {
            case Act::update_menus:
                return outcome_of(session_.update_menus(), before);
            case Act::command:
                return pick_command(before);
            case Act::undo:
                return undo();
            case Act::other_comp: {
                bring_other_comp_to_front(project());
                return outcome_of({}, before);
            }
            case Act::delete_comp: {
                host::model::Comp* in_front = project().open_comp();
                bring_other_comp_to_front(project());
                if (in_front != nullptr) project().delete_item(*in_front);
                return outcome_of({}, before);
            }
            case Act::foreign_command:
                return outcome_of(session_.pass_foreign_command(), before);
            case Act::idle:
                return outcome_of(session_.idle(), before);
            case Act::quit:
                return outcome_of(session_.quit(), before);
        }
        return {};
    }

    Outcome pick_command(const std::vector<std::string>& before) {
        if (plan_.situation->change_before_command) {
            session_.update_menus();
            plan_.situation->change_before_command(project());
            log_.take();
            log_.take_count();
        }
        const auto items = pickable();
        if (plan_.item >= items.size()) return outcome_of({}, before);
        saved_before_ = stage_->saved();
        before_command_ = before;
        Outcome outcome = outcome_of(session_.run_command(items[plan_.item]->command), before);
        if (after_first_.empty())
            after_first_ = text_;
        else
            outcome.change_from_first = first_difference(after_first_, text_);
        return outcome;
    }

    std::vector<const host::suites::MenuItem*> pickable() const {
        std::vector<const host::suites::MenuItem*> items;
        for (const auto& item : session_.menu_items())
            if (item.text != "-") items.push_back(&item);
        return items;
    }

    // As a person does it, who takes back what the last command did.
    Outcome undo() {
        for (std::size_t i = 0; i < last_steps_; ++i) project().undo().undo();
        Outcome outcome = outcome_of({}, before_command_);
        const std::string saved = stage_->saved();
        if (outcome.change.empty() && saved != saved_before_) {
            const auto at = std::mismatch(saved.begin(), saved.end(), saved_before_.begin(), saved_before_.end()).first;
            outcome.change = "the saved file differs at byte " + std::to_string(at - saved.begin());
        }
        return outcome;
    }

    Outcome outcome_of(const host::runner::VisitResult& result, const std::vector<std::string>& before) {
        Outcome outcome;
        outcome.calls = log_.take();
        outcome.call_count = log_.take_count();
        outcome.error = result.error;
        outcome.has_thrown = result.has_thrown;
        outcome.failed_in = log_.take_failed();
        outcome.is_enabled = result.is_enabled;
        outcome.is_handled = result.is_handled;
        outcome.told = result.reports;
        for (const auto& alert : result.alerts) outcome.told.push_back(alert.message);
        outcome.undo_steps = result.undo_steps;
        last_steps_ = result.undo_steps.size();
        for (const std::string& line : result.log) {
            constexpr std::string_view kScriptFailed = "a script failed: ";
            if (line.find("open; the host closed") != std::string::npos) ++outcome.groups_left_open;
            if (line.starts_with(kScriptFailed)) outcome.script_problems.push_back(line.substr(kScriptFailed.size()));
        }
        const auto diagnostics = session_.suites().diagnostics();
        for (; diagnostics_read_ < diagnostics.size(); ++diagnostics_read_) {
            const auto& one = diagnostics[diagnostics_read_];
            outcome.refusals.push_back({one.function, one.code, one.sentence});
        }
        text_ = project_text(project());
        outcome.project = number_of(text_);
        outcome.change = first_difference(before, text_);
        return outcome;
    }

    void read_registered(Registered& registered) {
        for (const auto* item : pickable()) registered.items.push_back({item->text, item->enabled});
        const auto& suites = session_.suites();
        registered.command_hooks = suites.command_hooks().size();
        registered.update_menu_hooks = suites.update_menu_hooks().size();
        registered.idle_hooks = suites.idle_hooks().size();
        registered.death_hooks = suites.death_hooks().size();
    }

    void read_ledger(VisitRecord& record) {
        host::suites::LedgerReport ledger = session_.suites().ledger();
        record.left = std::move(ledger.never_disposed);
        record.freed_while_locked = std::move(ledger.freed_while_locked);
        record.disposed_twice = std::move(ledger.disposed_twice);
        record.used_after_disposal = std::move(ledger.used_after_disposal);
    }

    const VisitPlan& plan_;
    std::unique_ptr<Stage> stage_;
    std::unique_ptr<host::scriptui::DialogDriver> dialogs_;
    host::script::Settings settings_ = host::script::Settings::in_memory();
    host::runner::Session session_;
    Place place_;
    CallLog log_;
    FaultMaker fault_;
    VisitJournal journal_;
    const host::runner::PluginModule& module_;
    std::size_t diagnostics_read_ = 0;
    std::size_t last_steps_ = 0;
    std::vector<std::string> text_;  // of the project now
    std::vector<std::string> before_command_;
    std::vector<std::string> after_first_;  // after the first command
    std::string saved_before_;
};

int visit_here(const std::string& module, const VisitPlan& plan, const ChildProcess::Parent& parent) {
    VisitRecord record;
    try {
        {
            const host::runner::PluginModule loaded(module);
            Visitor(loaded, plan, parent.place()).visit(record);
            parent.place() = Place::kUnloading;
        }
        parent.place() = Place::kAtHost;
        record.has_left_processes = parent.has_children();
    } catch (const host::runner::LoadError& problem) {
        record.load_problem = problem.what();
    } catch (const std::exception& problem) {
        record.host_problem = problem.what();
    }
    Packer packer;
    packer(record);
    parent.say(packer.bytes());
    parent.finish(0);
}

struct RunningVisit {
    const VisitPlan* plan;
    std::unique_ptr<ChildProcess> process;

    VisitRecord record() const {
        VisitRecord record;
        record.end = *process->end();
        try {
            if (record.has_finished()) Unpacker(process->said())(record);
        } catch (const std::exception&) {
            // Whoever writes anywhere has written there too.
            record = {};
            record.end.kind = host::base::ProcessEnd::Kind::exited;
        }
        record.printed = process->printed();
        record.where = Place::words(process->place());
        return record;
    }
};

RunningVisit start(const std::string& module, const VisitPlan& plan, const VisitLimits& limits) {
    const host::base::ProcessLimits process_limits{limits.processor_time, limits.time, limits.memory};
    const auto work = [&](const ChildProcess::Parent& parent) { return visit_here(module, plan, parent); };
    return {&plan, std::make_unique<ChildProcess>(work, process_limits, ChildProcess::Streams::apart)};
}

}  // namespace

void make_visits(const std::string& module, const std::vector<VisitPlan>& plans, const VisitLimits& limits,
                 unsigned jobs, const std::function<bool(const VisitPlan&, const VisitRecord&)>& on_record) {
    std::deque<RunningVisit> running;  // in the order of the plans
    std::size_t next = 0;
    while (next < plans.size() || !running.empty()) {
        while (next < plans.size() && running.size() < std::max(jobs, 1U)) {
            running.push_back(start(module, plans[next], limits));
            ++next;
        }
        std::vector<ChildProcess*> heard;
        for (const RunningVisit& one : running)
            if (!one.process->end()) heard.push_back(one.process.get());
        if (!running.front().process->end()) ChildProcess::hear_any(heard);
        while (!running.empty() && running.front().process->end()) {
            if (!on_record(*running.front().plan, running.front().record())) return;
            running.pop_front();
        }
    }
}

VisitRecord make_visit(const std::string& module, const VisitPlan& plan, const VisitLimits& limits) {
    VisitRecord record;
    make_visits(module, {plan}, limits, 1, [&](const VisitPlan&, const VisitRecord& made) {
        record = made;
        return true;
    });
    return record;
}

}  // namespace validator
