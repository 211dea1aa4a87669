// The licences of what is in the program and the page: what Debian notes of each library, and of the compiler's long list what
// it can link in.
//
// usage: notices.mjs PLAYER_FOLDER RESULT
import { readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";

const [playerFolder, result] = process.argv.slice(2);
const noteOf = (library) => readFileSync(`/usr/share/doc/${library}/copyright`, "utf8");

// The paragraphs on its system libraries, and the licences that these name.
function ofCompiler(note) {
  const paragraphs = note.split(/\n\s*\n/);
  const linked = paragraphs.filter((paragraph) => /^Files:\s+\*\n|^Files:[^:]* system\/lib\//.test(paragraph));
  const plain = (name) => name.trim().toLowerCase().replace(/ with .*/, "");
  const names = new Set(linked.flatMap((paragraph) => /^License:(.*)/m.exec(paragraph)[1].split(/ (?:and|or) /).map(plain)));
  const licences = paragraphs.filter((paragraph) => names.has(plain(/^License:(.*)/.exec(paragraph)?.[1] ?? "")));
  return [paragraphs[0], ...linked, ...licences].join("\n\n");
}

const notices = Object.fromEntries(["duktape-dev", "rapidjson-dev", "libjsmn-dev", "libzip-dev", "zlib1g-dev"].map((library) => [library, noteOf(library)]));
notices["the system libraries of emscripten"] = ofCompiler(noteOf("emscripten"));
notices["lottie-web"] = readFileSync(join(playerFolder, "LICENSE.md"), "utf8");
writeFileSync(result, Object.entries(notices).map(([name, note]) => `==== ${name} ====\n\n${note.trim()}\n`).join("\n\n"));
