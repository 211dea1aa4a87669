// Why a script stopped, in words.
#include <string>

#include <duktape.h>

#include "engine/environment.h"
#include "text.h"

namespace host::script {

namespace {

struct Description {
    int line = 0;
    std::string reason;
};

// The message of the value on top of the stack, with an error's name unless that is plain "Error". Runs script code, so
// it may throw.
duk_ret_t read_error(duk_context* ctx, void* pointer) {
    auto& description = *static_cast<Description*>(pointer);
    if (description.line == 0 && duk_is_error(ctx, -1)) {
        duk_get_prop_string(ctx, -1, "lineNumber");
        description.line = duk_to_int(ctx, -1);
        duk_pop(ctx);
    }
    duk_size_t size = 0;
    const char* data = duk_to_lstring(ctx, -1, &size);
    constexpr std::string_view kPlainName = "Error: ";
    std::string_view reason(data, size);
    if (reason.starts_with(kPlainName)) reason.remove_prefix(kPlainName.size());
    description.reason = to_utf8(reason);
    return 1;
}

}  // namespace

std::string all_time_used(const Limits& limits) {
    return "The scripts ran longer than " + std::to_string(limits.time_of_all->limit().count()) +
           " ms together and were ended.";
}

std::string describe_error(duk_context* ctx) {
    ScriptEnvironment& environment = ScriptEnvironment::of(ctx);
    Description description;
    description.line = environment.throw_line;
    if (duk_safe_call(ctx, read_error, &description, 1, 1) != DUK_EXEC_SUCCESS) {
        description.reason = "an error that cannot be converted to text was thrown";
    }
    duk_pop(ctx);

    if (environment.heap.time_is_up()) {
        const auto own = environment.heap.limits().time;
        description.reason = environment.heap.clock().limit() < own
                                 ? all_time_used(environment.heap.limits())
                                 : "The script ran longer than " + std::to_string(own.count()) + " ms and was ended.";
    } else if (environment.heap.is_out_of_memory()) {
        description.reason = "The script ran out of memory; it may use " +
                             std::to_string(environment.heap.limits().memory >> 20) + " MiB.";
    }
    return "Unable to execute script at line " + std::to_string(description.line) + ". " + description.reason;
}

}  // namespace host::script
