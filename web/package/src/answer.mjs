// What a thread answers to a command. `load` gives the compiled program from what the first request brought.
import { commands } from "./commands.mjs";
import { packError } from "./errors.mjs";

export async function answer(request, load, post) {
  try {
    const module = await load(request.program);
    post({ id: request.id, result: commands[request.command](module, request.input, request.options) });
  } catch (error) {
    post({ id: request.id, error: packError(error) });
  }
}
