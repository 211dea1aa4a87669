// What one record says against a plug-in, in sentences that its author can act on.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "examiner.h"

namespace validator {

// The visit did not come to its end: it crashed, hung, ended the program, took too much memory.
std::optional<TestFinding> bad_end(const VisitPlan& plan, const VisitRecord& record, const VisitLimits& limits);

bool has_hung(const VisitRecord& record);

// "When one layer is selected, "
std::string when(const VisitPlan& plan);

// An exception left a function of the plug-in. `command` names the command hook.
std::optional<TestFinding> exception_in(const VisitPlan& plan, const Outcome& outcome,
                                        const std::string& command = "command hook");

// An error code without a fault. Told to the user it is polite; after a call that this host does not offer it is none
// of the plug-in's.
std::optional<TestFinding> error_in(const VisitPlan& plan, const Outcome& outcome,
                                    const std::string& command = "command hook");

// "its idle hook returned error 3 after the host refused ItemSuite6.AEGP_GetItemType (The item handle is null.)"
std::string error_words(const Outcome& outcome, const std::string& command = "command hook");

// What the host refused because it was of something that does not exist any more; null if there is nothing of the kind.
const Refusal* refusal_of_what_is_gone(const Outcome& outcome);

bool is_of_start(const VisitRecord& record, const host::suites::HandedOut& handle);
// What is left and not declared; where a call has failed of itself, what is declared for that case counts too.
std::vector<host::suites::HandedOut> undeclared_leaks(const VisitRecord& record, const Declared& declared);

// The call that a fault struck: in this record if it is there, else where `clean` has it. Empty if it struck none.
std::string struck_call(const Fault& fault, const VisitRecord& record, const VisitRecord& clean);
const MadeCall* injected_call(const VisitRecord& record);

// Such a function only ends or gives back: that it fails is nobody's fault.
bool gives_back(const std::string& function);
bool changes_the_project(const std::string& function);

// "LayerSuite5.AEGP_X, CompSuite4.AEGP_Y"
std::string not_offered_in(const Outcome& outcome);

}  // namespace validator
