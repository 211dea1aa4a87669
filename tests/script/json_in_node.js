// Answers, line by line, the jobs of the test that compares the dialog script's JSON with Node's. What separates the two
// by age alone is taken away here: the old form escapes more characters, and leaves surrogates without a partner as they are.
"use strict";

const modern = JSON.stringify;
const escapedOfOld = /[\u007f-\u009f\u00ad\u0600-\u0604\u070f\u17b4\u17b5\u200c-\u200f\u2028-\u202f\u2060-\u206f\ufeff\ufff0-\uffff]/g;

JSON.stringify = function (value) {
    const text = modern(value);
    if (text === undefined) return undefined;
    return text
        .replace(/\\\\|\\u(d[89a-f][0-9a-f]{2})/g, (found, unit) => (unit ? String.fromCharCode(parseInt(unit, 16)) : found))
        .replace(escapedOfOld, (found) => "\\u" + found.charCodeAt(0).toString(16).padStart(4, "0"));
};

const jobs = require("fs").readFileSync(process.argv[2], "ascii").split("\n").slice(0, -1);
process.stdout.write(jobs.map((job) => (0, eval)(job) + "\n").join(""));
