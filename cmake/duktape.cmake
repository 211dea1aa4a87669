# Duktape as a script engine that can be stopped. Debian's shared library is built without the check that ends an endless
# loop, and unwinds C++ frames with longjmp. The package duktape-dev also installs the engine's source; it is compiled here
# with that check switched on, and as C++ so that script errors run destructors.

find_file(DUKTAPE_SOURCE NAMES duktape.c PATHS /usr/share/duktape /usr/local/share/duktape NO_CACHE REQUIRED NO_CMAKE_FIND_ROOT_PATH)
cmake_path(GET DUKTAPE_SOURCE PARENT_PATH duktape_from)

# add_stoppable_duktape(<target> CHECK <function> WORK <function> STACK <function>)
# Makes the object library <target>, which asks three functions with C linkage while a script runs. Anything but 0 is an error
# of the script:
#   CHECK  int(void* heap_udata), now and then between instructions; as long as it says so, no script code runs any more
#   WORK   int(void* heap_udata, size_t steps), in the loops of built-in functions; must go on to say so as CHECK does
#   STACK  int(void* heap_udata), before native recursion
function(add_stoppable_duktape target)
  cmake_parse_arguments(DUKTAPE "" "CHECK;WORK;STACK" "" ${ARGN})
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/duktape")

  # The source includes its configuration from beside itself, so the three files go to one folder.
  configure_file("${duktape_from}/duktape.h" "${folder}/duktape.h" COPYONLY)
  # Some instructions are slow, so the check comes every 200 instead of every 262144. A regular expression may take this many
  # steps, half a second, instead of a minute. A jump over more instructions than its number can hold is an error instead of a
  # jump to somewhere else.
  set(fits_check "if (offset < -DUK_BC_JUMP_BIAS || offset >= DUK_BC_JUMP_BIAS) \
DUK_ERROR_RANGE(comp_ctx->thr, DUK_STR_BYTECODE_LIMIT);")
  set(emit_jump "DUK_ASSERT(offset + DUK_BC_JUMP_BIAS <= DUK_BC_ABC_MAX);")
  set(patch_jump "instr->ins = DUK_ENC_OP_ABC(DUK_OP_JUMP, offset + DUK_BC_JUMP_BIAS);")
  set(join_jumps "bc[i].ins = DUK_ENC_OP_ABC(DUK_OP_JUMP, target_pc2 - (i + 1) + DUK_BC_JUMP_BIAS);")
  set(far_apart "if (target_pc2 - i <= -DUK_BC_JUMP_BIAS || target_pc2 - i >= DUK_BC_JUMP_BIAS) continue;")
  # Where built-in functions can take long: elements of arrays, characters of texts, places where a text could stand in
  # another, steps of regular expressions; and the compiler at each word.
  set(get_element "return duk_get_prop(thr, obj_idx);
}

DUK_EXTERNAL duk_bool_t duk_get_prop_heapptr(")
  set(find_element "return duk_has_prop(thr, obj_idx);
}

DUK_EXTERNAL duk_bool_t duk_has_prop_heapptr(")
  set(decode "if (duk_unicode_decode_xutf8(thr, ptr, ptr_start, ptr_end, &cp)) {")
  set(compare "if (duk_memcmp((const void *) p, (const void *) q_start, (size_t) q_blen) == 0) {")
  set(match "re_ctx->steps_count++;")
  set(next_word "DUK_ASSERT_DISABLE(comp_ctx->curr_token.t >= 0); /* unsigned */")
  copy_with_changes("${duktape_from}/duktape.c" "${folder}/duktape.cpp"
    "${get_element}" "DUK_HOST_WORK(thr, 1); ${get_element}"
    "${find_element}" "DUK_HOST_WORK(thr, 1); ${find_element}"
    "${decode}" "DUK_HOST_WORK(thr, 1); ${decode}"
    "${compare}" "DUK_HOST_WORK(thr, (size_t) q_blen / 16); ${compare}"
    "${match}" "${match} DUK_HOST_WORK(re_ctx->thr, 1);"
    "${next_word}" "DUK_HOST_WORK(thr, 4); ${next_word}"
    "#define DUK_HTHREAD_INTCTR_DEFAULT (256L * 1024L)" "#define DUK_HTHREAD_INTCTR_DEFAULT 200L"
    "#define DUK_RE_EXECUTE_STEPS_LIMIT 1000000000L" "#define DUK_RE_EXECUTE_STEPS_LIMIT 20000000L"
    "${emit_jump}" "${fits_check}"
    "${patch_jump}" "${fits_check} ${patch_jump}"
    "${join_jumps}" "${far_apart} ${join_jumps}")
  # Collecting garbage may recurse deeper: with the default, long chains of objects take the square of their length.
  copy_with_changes("${duktape_from}/duk_config.h" "${folder}/duk_config.h" "/* __OVERRIDE_DEFINES__ */"
"#define DUK_USE_CPP_EXCEPTIONS
#undef DUK_USE_MARK_AND_SWEEP_RECLIMIT
#define DUK_USE_MARK_AND_SWEEP_RECLIMIT 4096
#define DUK_USE_INTERRUPT_COUNTER
extern \"C\" int ${DUKTAPE_CHECK}(void* heap_udata);
#define DUK_USE_EXEC_TIMEOUT_CHECK(heap_udata) ${DUKTAPE_CHECK}(heap_udata)
extern \"C\" int ${DUKTAPE_WORK}(void* heap_udata, size_t steps);
#define DUK_HOST_WORK(thr, steps) do { if (${DUKTAPE_WORK}((thr)->heap->heap_udata, (steps))) \
DUK_ERROR_RANGE((thr), \"execution timeout\"); } while (0)
extern \"C\" int ${DUKTAPE_STACK}(void* heap_udata);
#define DUK_USE_NATIVE_STACK_CHECK() ${DUKTAPE_STACK}(thr->heap->heap_udata)")

  add_library(${target} OBJECT "${folder}/duktape.cpp")
  target_compile_options(${target} PRIVATE -w)
  target_include_directories(${target} SYSTEM PUBLIC "${folder}")
endfunction()

# copy_with_changes(<from> <to> [<old> <new>]...)
# Writes <to> only when that changes it. Stops the configuration when <from> does not hold one of the old texts.
function(copy_with_changes from to)
  file(READ "${from}" text)
  math(EXPR last "${ARGC} - 1")
  foreach(old_at RANGE 2 ${last} 2)
    math(EXPR new_at "${old_at} + 1")
    string(FIND "${text}" "${ARGV${old_at}}" found)
    if(found EQUAL -1)
      message(FATAL_ERROR "${from} does not hold: ${ARGV${old_at}}")
    endif()
    string(REPLACE "${ARGV${old_at}}" "${ARGV${new_at}}" text "${text}")
  endforeach()
  file(CONFIGURE OUTPUT "${to}" CONTENT "${text}" @ONLY)
endfunction()
