// Files and streams of Node.js, with the promises of the native command: a result is put in place as a whole or not at all, keeps
// the mode of the file that it replaces, and follows symbolic links.
import { randomBytes } from "node:crypto";
import fs from "node:fs";
import path from "node:path";

const kBlock = 1 << 16;

// "ENOENT: no such file or directory, open 'a'" -> "No such file or directory", as the native command says it.
function reasonOf(error) {
  const words = /^[A-Z0-9]+: ([^,]*)/.exec(error.message)?.[1] ?? error.message;
  return words[0].toUpperCase() + words.slice(1);
}

function saying(work) {
  return (...args) => {
    try {
      return work(...args);
    } catch (error) {
      throw error.code ? new Error(reasonOf(error)) : error;
    }
  };
}

function inUnits(bytes) {
  const mega = Math.floor(bytes / 1048576);
  return mega < 1024 ? `${mega} MB` : `${Math.floor(mega / 1024)} GB`;
}

const tooLarge = (limit) => new Error(`it is larger than ${inUnits(limit)}, the most that is read`);

function readAll(descriptor, limit) {
  const parts = [];
  let size = 0;
  for (;;) {
    const block = new Uint8Array(kBlock);
    let count = 0;
    try {
      count = fs.readSync(descriptor, block, 0, kBlock, null);
    } catch (error) {
      if (error.code === "EOF") count = 0; // of a closed pipe, on Windows
      else if (error.code === "EAGAIN") continue; // a pipe or terminal that has nothing yet
      else throw error;
    }
    if (count === 0) return Buffer.concat(parts);
    size += count;
    if (size > limit) throw tooLarge(limit);
    parts.push(block.subarray(0, count));
  }
}

function writeAll(descriptor, bytes) {
  for (let at = 0; at < bytes.length;) {
    try {
      at += fs.writeSync(descriptor, bytes, at);
    } catch (error) {
      if (error.code !== "EAGAIN") throw error; // a full pipe
    }
  }
}

const statsOf = (name) => fs.statSync(name, { throwIfNoEntry: false });

function read(name, limit, onlyRegular) {
  const descriptor = fs.openSync(name, onlyRegular ? fs.constants.O_RDONLY | (fs.constants.O_NONBLOCK ?? 0) : "r");
  try {
    const stats = fs.fstatSync(descriptor);
    if (stats.isDirectory()) throw new Error("it is a folder");
    if (onlyRegular && !stats.isFile()) throw new Error("it is no regular file");
    if (stats.isBlockDevice() || stats.isCharacterDevice()) throw new Error("it is a device");
    if (stats.isFile() && stats.size > limit) throw tooLarge(limit);
    return readAll(descriptor, limit);
  } finally {
    fs.closeSync(descriptor);
  }
}

// The name with links followed even where the last part does not exist.
function real(name) {
  const absolute = path.resolve(name);
  try {
    return fs.realpathSync(absolute);
  } catch {
    const parent = path.dirname(absolute);
    return parent === absolute ? absolute : path.join(real(parent), path.basename(absolute));
  }
}

// The file at the end of a chain of symbolic links, made already or not.
function followLinks(name) {
  const stats = fs.lstatSync(name, { throwIfNoEntry: false });
  return stats?.isSymbolicLink() ? followLinks(path.resolve(path.dirname(name), fs.readlinkSync(name))) : name;
}

function replace(name, bytes, temporaryPrefix, evenIfReadOnly) {
  const old = statsOf(name);
  if (old?.isDirectory()) throw new Error("it is a folder");
  if (old && !old.isFile()) return fs.writeFileSync(name, bytes);
  if (old && !evenIfReadOnly && (old.mode & 0o222) === 0) throw new Error("it is read-only");
  const file = followLinks(name);
  const temporary = path.join(path.dirname(file), temporaryPrefix + randomBytes(3).toString("hex"));
  let descriptor;
  try {
    descriptor = fs.openSync(temporary, "wx");
  } catch (error) {
    throw new Error(`no file can be made in its folder: ${reasonOf(error)}`);
  }
  try {
    writeAll(descriptor, bytes);
    if (old) fs.fchmodSync(descriptor, old.mode & 0o7777);
    fs.fsyncSync(descriptor);
    fs.closeSync(descriptor);
    descriptor = undefined;
    fs.renameSync(temporary, file);
  } catch (error) {
    if (descriptor !== undefined) fs.closeSync(descriptor);
    fs.rmSync(temporary, { force: true });
    throw error;
  }
}

export const nodeFiles = {
  kind: (name) => {
    try {
      const stats = statsOf(name);
      return !stats ? "none" : stats.isDirectory() ? "folder" : stats.isFile() ? "file" : "other";
    } catch {
      return "none";
    }
  },
  entries: saying((folder) =>
    fs.readdirSync(folder, { withFileTypes: true }).map((entry) =>
      ({ name: entry.name, kind: entry.isDirectory() ? "folder" : entry.isFile() ? "file" : "other" }))),
  real,
  identity: (name) => {
    try {
      const stats = fs.statSync(name, { bigint: true });
      return { device: stats.dev, number: stats.ino, links: stats.isFile() ? stats.nlink : 1n };
    } catch {
      return null;
    }
  },
  read: saying(read),
  makeFolder: saying((name) => fs.mkdirSync(name, { recursive: true })),
  move: saying((name, to) => { if (statsOf(name)) fs.renameSync(name, to); }),
  replace: saying(replace),
};

export const nodeStreams = {
  readAll: saying((limit) => readAll(0, limit)),
  writeOutput: saying((bytes) => writeAll(1, bytes)),
  writeError: (bytes) => {
    try {
      writeAll(2, bytes);
    } catch {
      // Nobody is left to tell.
    }
  },
  outputIsTerminal: () => process.stdout.isTTY === true,
  errorIsTerminal: () => process.stderr.isTTY === true,
};
