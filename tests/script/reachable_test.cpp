// Everything that a script can get hold of: each object and function on any path from the global object, from what
// syntax makes, and from the host's objects, prototypes and accessors included. tests/golden/reachable_from_scripts.txt
// lists it.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "world.h"

namespace script_test {
namespace {

// Breadth first, in alphabetical order, so that each thing is listed under its shortest path.
constexpr const char* kWalk = R"js(
(function (roots) {
    var seen = [], queue = [], lines = [];
    function note(path, value) {
        var kind = value === null ? "null" : typeof value;
        if (kind !== "object" && kind !== "function") { lines.push(path + ": " + kind); return; }
        for (var i = 0; i < seen.length; i++) if (seen[i].value === value) {
            lines.push(path + ": is " + seen[i].path);
            return;
        }
        seen.push({path: path, value: value});
        queue.push({path: path, value: value});
        lines.push(path + ": " + kind + (kind === "function" ? "/" + value.length : ""));
    }
    function keys(object) {
        var all = Object.getOwnPropertyNames(object).sort();
        return all.concat(Object.getOwnPropertySymbols ? Object.getOwnPropertySymbols(object) : []);
    }
    for (var i = 0; i < roots.length; i++) note(roots[i][0], roots[i][1]);
    while (queue.length > 0) {
        var next = queue.shift();
        var names = keys(next.value);
        for (var k = 0; k < names.length; k++) {
            var path = next.path + "." + String(names[k]);
            var what = Object.getOwnPropertyDescriptor(next.value, names[k]);
            if (what.get) note(path + " (get)", what.get);
if (what.set) note(path + " (set)", what.set);
if (!what.get && !what.set) note(path, what.value);
}
note(next.path + " (prototype)", Object.getPrototypeOf(next.value));
}
return lines.sort().join("\n") + "\n";
})([["global", this]].concat((function () {
    var roots = [
        [ "arguments", arguments ], [ "expression /x/", / x / ], [ "match", / x /.exec("x") ],
        [ "wrapped text", Object("x") ], [ "wrapped number", Object(1) ], [ "wrapped truth", Object(true) ],
        [ "date", new Date(0) ], [ "bound", parseInt.bind(null) ], [ "made function", new Function("a", "return a") ]
    ];
    try {
        undefined.x;
    } catch (e) {
        roots.push([ "error", e ]);
    }
    var p = app.project, w = new Window("dialog");
    roots.push([ "project", p ], [ "settings", app.settings ], [ "folder", p.item(1) ], [ "comp", p.item(2) ],
               [ "footage", p.item(3) ], [ "layer", p.item(2).layer(1) ], [ "window", w ]);
    var kinds = [ "group", "panel", "statictext", "edittext", "button", "checkbox", "radiobutton" ];
    for (var i = 0; i < kinds.length; i++) roots.push([ kinds[i], w.add(kinds[i]) ]);
    return roots.concat([ [ "size", w.preferredSize ], [ "margins", w.margins ], [ "children", w.children ] ]);
})()))
)js";

TEST(Reachable, scripts_reach_exactly_what_the_list_says) {
    SmallProject world;
    const std::string reached = world.run(kWalk);
    const bool is_as_listed = reached == read_file(GOLDEN "/reachable_from_scripts.txt");
    const std::string now = testing::TempDir() + "reachable_from_scripts.txt";
    if (!is_as_listed) std::ofstream(now, std::ios::binary) << reached;
    EXPECT_TRUE(is_as_listed) << "what they reach now is in " << now;
}

}  // namespace
}  // namespace script_test
