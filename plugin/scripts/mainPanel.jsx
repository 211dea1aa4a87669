//TODO: Remember selection

/*
Layout of the dialog, for reading only:
{
  "id": "dialog", "type": "dialog", "text": "Exflate", "orientation": "column",
  "alignChildren": ["fill", "top"], "spacing": 10, "margins": 16,
  "children": [
    {"id": "prefixGroup", "type": "group", "orientation": "row", "alignChildren": ["left", "center"], "spacing": 10, "margins": 0,
     "children": [
      {"id": "prefixTitle", "type": "statictext", "text": "Exflated Layer Prefix"},
      {"id": "prefixInput", "type": "edittext", "text": "", "width": 250}
    ]},
    {"id": "optionsGroup", "type": "group", "orientation": "column", "alignChildren": ["left", "center"], "spacing": 10, "margins": [20, 0, 0, 0],
     "children": [
      {"id": "option1Group", "type": "group", "orientation": "column", "spacing": 10, "margins": 0,
       "children": [
        {"id": "optionCopyAttributes", "type": "radiobutton", "text": "Copy pre-comp attributes to layers", "value": true, "alignment": ["left", "center"]},
        {"id": "staticText1Group", "type": "group", "orientation": "row", "margins": [20, 0, 0, 8],
         "children": [
          {"id": "staticText1", "type": "group", "orientation": "column", "width": 400,
           "lines": ["Use this option if you would like to copy the effects and other", "attributes of the pre-comp to the layers being extracted"]}
        ]}
      ]},
      {"id": "option2Group", "type": "group", "orientation": "column", "spacing": 10, "margins": 0,
       "children": [
        {"id": "optionDiscardAttributes", "type": "radiobutton", "text": "Discard pre-comp attributes", "value": false},
        {"id": "staticText2Group", "type": "group", "orientation": "row", "margins": [20, 0, 0, 12],
         "lines": ["Use this option to extract all layers, but disregard the", "properties of the pre-comp layer"]}
      ]},
      {"id": "optionDeleteSource", "type": "checkbox", "text": "Delete source after exflating"},
      {"id": "optionKeepInComp", "type": "checkbox", "text": "Keep pre-comp in composition"},
      {"id": "optionPrependPrecompName", "name": "prependPrecompName", "type": "checkbox", "text": "Prepend pre-comp name to extracted layers"},
      {"id": "optionFixRandomExpresions", "name": "fixRandomExpresions", "type": "checkbox", "text": "Attempt to correct layers with randomized expressions"},
      {"id": "buttons", "type": "group", "orientation": "row", "alignChildren": ["right", "center"], "spacing": 10, "margins": [0, 20, 0, 0], "alignment": ["fill", "center"],
       "children": [
        {"id": "buttonOK", "type": "button", "text": "Ok", "width": 100},
        {"id": "buttonCancel", "type": "button", "text": "Cancel", "width": 100}
      ]}
    ]}
  ]
}
*/

// JSON, where the script engine has none. The language is its third edition: nothing newer may be used here.
if (typeof JSON !== "object") {
    JSON = (function () {
        // Characters that engines drop, or read as line ends, when they stand in program text; quotes escape them too.
        var inProgramText = /[\u00ad\u0600-\u0604\u070f\u17b4\u17b5\u200c-\u200f\u2028-\u202f\u2060-\u206f\ufeff\ufff0-\uffff]/g;
        var inQuotes = /[\\"\u0000-\u001f\u007f-\u009f\u00ad\u0600-\u0604\u070f\u17b4\u17b5\u200c-\u200f\u2028-\u202f\u2060-\u206f\ufeff\ufff0-\uffff]/g;
        var shortEscapes = {"\b": "\\b", "\t": "\\t", "\n": "\\n", "\f": "\\f", "\r": "\\r", "\"": "\\\"", "\\": "\\\\"};

        function numberedEscape(character) {
            return "\\u" + ("0000" + character.charCodeAt(0).toString(16)).slice(-4);
        }

        function owns(object, key) {
            return Object.prototype.hasOwnProperty.call(object, key);
        }

        function escaped(character) {
            return owns(shortEscapes, character) ? shortEscapes[character] : numberedEscape(character);
        }

        function quote(text) {
            return "\"" + text.replace(inQuotes, escaped) + "\"";
        }

        function kindOf(value) {
            return Object.prototype.toString.call(value).slice(8, -1);
        }

        function twoDigits(number) {
            return (number < 10 ? "0" : "") + number;
        }

        function dateText(date) {
            if (!isFinite(date.valueOf())) {
                return null;
            }
            return date.getUTCFullYear() + "-" + twoDigits(date.getUTCMonth() + 1) + "-" + twoDigits(date.getUTCDate()) + "T" +
                twoDigits(date.getUTCHours()) + ":" + twoDigits(date.getUTCMinutes()) + ":" + twoDigits(date.getUTCSeconds()) + "Z";
        }

        // What stands for the value: the result of its toJSON, the plain value of a boxed one, or itself.
        function plain(key, value) {
            if (value && typeof value === "object") {
                if (typeof value.toJSON === "function") {
                    return value.toJSON(key);
                }
                switch (kindOf(value)) {
                case "Date":
                    return dateText(value);
                case "Boolean":
                case "Number":
                case "String":
                    return value.valueOf();
                }
            }
            return value;
        }

        function stringify(value, replacer, space) {
            var step = "";
            var i;
            if (typeof space === "number") {
                for (i = 0; i < space; i += 1) {
                    step += " ";
                }
            } else if (typeof space === "string") {
                step = space;
            }
            if (replacer && typeof replacer !== "function" && kindOf(replacer) !== "Array") {
                throw new Error("JSON.stringify");
            }

            function enclose(parts, open, close, indent) {
                if (parts.length === 0) {
                    return open + close;
                }
                if (step === "") {
                    return open + parts.join(",") + close;
                }
                return open + "\n" + indent + step + parts.join(",\n" + indent + step) + "\n" + indent + close;
            }

            function listText(list, indent) {
                var parts = [];
                var n;
                for (n = 0; n < list.length; n += 1) {
                    parts[n] = valueText(String(n), list, indent + step) || "null";
                }
                return enclose(parts, "[", "]", indent);
            }

            function memberText(object, key, indent) {
                var text = valueText(key, object, indent + step);
                return text === undefined ? undefined : quote(key) + (step === "" ? ":" : ": ") + text;
            }

            function objectText(object, indent) {
                var parts = [];
                var key;
                var n;
                function add(name) {
                    var text = memberText(object, name, indent);
                    if (text !== undefined) {
                        parts.push(text);
                    }
                }
                if (replacer && typeof replacer !== "function") {
                    for (n = 0; n < replacer.length; n += 1) {
                        if (typeof replacer[n] === "string") {
                            add(replacer[n]);
                        }
                    }
                } else {
                    for (key in object) {
                        if (owns(object, key)) {
                            add(key);
                        }
                    }
                }
                return enclose(parts, "{", "}", indent);
            }

            // Undefined for what has no JSON form.
            function valueText(key, holder, indent) {
                var item = plain(key, holder[key]);
                if (typeof replacer === "function") {
                    item = replacer.call(holder, key, item);
                }
                switch (typeof item) {
                case "string":
                    return quote(item);
                case "number":
                    return isFinite(item) ? String(item) : "null";
                case "boolean":
                    return String(item);
                case "object":
                    if (item === null) {
                        return "null";
                    }
                    return kindOf(item) === "Array" ? listText(item, indent) : objectText(item, indent);
                }
                return undefined;
            }

            return valueText("", {"": value}, "");
        }

        var escapes = /\\(?:["\\\/bfnrt]|u[0-9a-fA-F]{4})/g;
        var tokens = /("[^"\\\u0000-\u001f]*")|(-?(?:0|[1-9][0-9]*)(?:\.[0-9]+)?(?:[eE][+\-]?[0-9]+)?|true|false|null)|([\[\]{}:,])|([ \t\r\n]+)|[^"]|"/g;
        var innermost = /\[[^\[\]{}]*\]|\{[^\[\]{}]*\}/g;

        // "s" for a string, "v" for any other value, nothing for blanks, "!" for what is no JSON.
        function shapeOfToken(token, text, value, mark, blanks) {
            if (text) {
                return "s";
            }
            if (value) {
                return "v";
            }
            return mark || (blanks ? "" : "!");
        }

        function shapeOfBracket(bracket) {
            var inside = bracket.slice(1, -1);
            var valid = bracket.charAt(0) === "[" ?
                (/^[sv]?$/).test(inside.replace(/[sv],(?=[sv])/g, "")) :
                (/^(?:s:[sv])?$/).test(inside.replace(/s:[sv],(?=s:)/g, ""));
            return valid ? "v" : "!";
        }

        // Nothing but JSON may reach eval: the text is reduced, bracket by bracket, to the shape of one value.
        function isSafe(text) {
            var shape = text.replace(escapes, "@").replace(tokens, shapeOfToken);
            var before;
            do {
                before = shape;
                shape = shape.replace(innermost, shapeOfBracket);
            } while (shape !== before);
            return shape === "s" || shape === "v";
        }

        function parse(text, reviver) {
            var source = String(text);
            var value;
            if (!isSafe(source)) {
                throw new SyntaxError("JSON.parse");
            }
            // Only now: what stood behind a backslash must not become the end of an escape.
            source = source.replace(inProgramText, numberedEscape);

            function revive(holder, key) {
                var item = holder[key];
                var name;
                var revived;
                if (item && typeof item === "object") {
                    for (name in item) {
                        if (owns(item, name)) {
                            revived = revive(item, name);
                            if (revived === undefined) {
                                delete item[name];
                            } else {
                                item[name] = revived;
                            }
                        }
                    }
                }
                return reviver.call(holder, key, item);
            }

            value = eval("(" + source + ")");
            return typeof reviver === "function" ? revive({"": value}, "") : value;
        }

        return {stringify: stringify, parse: parse};
    }());
}

// DIALOG

var dialog = new Window("dialog", "Exflate", undefined, {name: "dialog"});
dialog.orientation = "column";
dialog.alignChildren = ["fill", "top"];
dialog.spacing = 10;
dialog.margins = 16;

// PREFIX

var prefixGroup = dialog.add("group", undefined, {name: "prefixGroup"});
prefixGroup.orientation = "row";
prefixGroup.alignChildren = ["left", "center"];
prefixGroup.spacing = 10;
prefixGroup.margins = 0;

var prefixTitle = prefixGroup.add("statictext", undefined, "Exflated Layer Prefix", {name: "prefixTitle"});

var prefixInput = prefixGroup.add("edittext", undefined, "", {name: "prefixInput"});
prefixInput.preferredSize.width = 250;

// OPTIONS

var optionsGroup = dialog.add("group", undefined, {name: "optionsGroup"});
optionsGroup.orientation = "column";
optionsGroup.alignChildren = ["left", "center"];
optionsGroup.spacing = 10;
optionsGroup.margins = [20, 0, 0, 0];

// Copy the attributes

var option1Group = optionsGroup.add("group", undefined, {name: "option1Group"});
option1Group.orientation = "column";
option1Group.alignChildren = ["left", "center"];
option1Group.spacing = 10;
option1Group.margins = 0;

var optionCopyAttributes = option1Group.add("radiobutton", undefined, "Copy pre-comp attributes to layers", {name: "optionCopyAttributes"});
optionCopyAttributes.alignment = ["left", "center"];
optionCopyAttributes.value = true;

var staticText1Group = option1Group.add("group", undefined, {name: "staticText1Group"});
staticText1Group.orientation = "row";
staticText1Group.alignChildren = ["left", "center"];
staticText1Group.spacing = 10;
staticText1Group.margins = [20, 0, 0, 8];

var staticText1 = staticText1Group.add("group", undefined, {name: "staticText1"});
staticText1.preferredSize.width = 400;
staticText1.orientation = "column";
staticText1.alignChildren = ["left", "center"];
staticText1.spacing = 0;
staticText1.margins = 0;
var staticText1Line1 = staticText1.add("statictext", undefined, "Use this option if you would like to copy the effects and other", {name: "staticText1Line1"});
var staticText1Line2 = staticText1.add("statictext", undefined, "attributes of the pre-comp to the layers being extracted", {name: "staticText1Line2"});

// Discard the attributes

var option2Group = optionsGroup.add("group", undefined, {name: "option2Group"});
option2Group.orientation = "column";
option2Group.alignChildren = ["left", "center"];
option2Group.spacing = 10;
option2Group.margins = 0;

var optionDiscardAttributes = option2Group.add("radiobutton", undefined, "Discard pre-comp attributes", {name: "optionDiscardAttributes"});
optionDiscardAttributes.value = false;

var staticText2Group = option2Group.add("group", undefined, {name: "staticText2Group"});
staticText2Group.orientation = "row";
staticText2Group.alignChildren = ["left", "center"];
staticText2Group.spacing = 10;
staticText2Group.margins = [20, 0, 0, 12];
var staticText2Line1 = staticText2Group.add("statictext", undefined, "Use this option to extract all layers, but disregard the", {name: "staticText2Line1"});
var staticText2Line2 = staticText2Group.add("statictext", undefined, "properties of the pre-comp layer", {name: "staticText2Line2"});

// The two radio buttons stand in different groups, so nothing but these handlers keeps them exclusive.
optionCopyAttributes.onClick = function () {
    optionDiscardAttributes.value = false;
};
optionDiscardAttributes.onClick = function () {
    optionCopyAttributes.value = false;
};

// What becomes of the pre-comp: deleting its source and keeping its layer exclude each other

var optionDeleteSource = optionsGroup.add("checkbox", undefined, "Delete source after exflating", {name: "optionDeleteSource"});
var optionKeepInComp = optionsGroup.add("checkbox", undefined, "Keep pre-comp in composition", {name: "optionKeepInComp"});
optionDeleteSource.onClick = function () {
    optionKeepInComp.enabled = !optionDeleteSource.value;
};
optionKeepInComp.onClick = function () {
    optionDeleteSource.enabled = !optionKeepInComp.value;
};

var optionPrependPrecompName = optionsGroup.add("checkbox", undefined, "Prepend pre-comp name to extracted layers", {name: "prependPrecompName"});
var optionFixRandomExpresions = optionsGroup.add("checkbox", undefined, "Attempt to correct layers with randomized expressions", {name: "fixRandomExpresions"});

// BUTTONS

var buttons = optionsGroup.add("group", undefined, {name: "buttons"});
buttons.orientation = "row";
buttons.alignChildren = ["right", "center"];
buttons.spacing = 10;
buttons.margins = [0, 20, 0, 0];
buttons.alignment = ["fill", "center"];

var buttonOK = buttons.add("button", undefined, "Ok", {name: "buttonOK"});
buttonOK.preferredSize.width = 100;

var buttonCancel = buttons.add("button", undefined, "Cancel", {name: "buttonCancel"});
buttonCancel.preferredSize.width = 100;

// SETTINGS

var settingsSection = "corvane.exflate";
var settingsType = PREFType.PREF_Type_MACHINE_SPECIFIC;

// Calls restore with what was saved under the key, if anything was. What cannot be read is shown and left as it is.
function restoreExflateSetting(key, restore) {
    try {
        if (app.settings.haveSetting(settingsSection, key, settingsType)) {
            restore(app.settings.getSetting(settingsSection, key, settingsType));
        }
    } catch (error) {
        alert(error.toString());
    }
}

function saveExflateSetting(key, text) {
    app.settings.saveSetting(settingsSection, key, text, settingsType);
}

restoreExflateSetting("settingCopyPrecompAttr", function (text) {
    optionCopyAttributes.value = text === "true";
    optionDiscardAttributes.value = !optionCopyAttributes.value;
});
restoreExflateSetting("settingPrefixInput", function (text) {
    prefixInput.text = text;
});
restoreExflateSetting("settingDeleteSource", function (text) {
    if (text === "true") {
        optionDeleteSource.value = true;
        optionKeepInComp.value = false;
        optionKeepInComp.enabled = false;
    }
});
restoreExflateSetting("settingKeepInComp", function (text) {
    if (text === "true") {
        optionKeepInComp.value = true;
        optionDeleteSource.value = false;
        optionDeleteSource.enabled = false;
    }
});
restoreExflateSetting("settingPrependPrecompName", function (text) {
    optionPrependPrecompName.value = text === "true";
});
restoreExflateSetting("settingFixRandomExpressions", function (text) {
    optionFixRandomExpresions.value = text === "true";
});

// RESULT

var result = "";

buttonOK.onClick = function () {
    try {
        saveExflateSetting("settingCopyPrecompAttr", optionCopyAttributes.value.toString());
        saveExflateSetting("settingPrefixInput", prefixInput.text);
        saveExflateSetting("settingDeleteSource", optionDeleteSource.value.toString());
        saveExflateSetting("settingKeepInComp", optionKeepInComp.value.toString());
        saveExflateSetting("settingPrependPrecompName", optionPrependPrecompName.value.toString());
        saveExflateSetting("settingFixRandomExpressions", optionFixRandomExpresions.value.toString());
    } catch (error) {
        alert(error.toString());
    }
    result = JSON.stringify([
        optionCopyAttributes.value,
        optionDeleteSource.value,
        optionKeepInComp.value,
        prefixInput.text,
        optionPrependPrecompName.value,
        optionFixRandomExpresions.value
    ]);
    dialog.close();
};

buttonCancel.onClick = function () {
    result = "";
    dialog.close();
};

dialog.show();

result;
