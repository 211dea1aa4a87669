# What fish offers after `exflate`.
set -l subcommands run check report list replay dialog
set -l none "not __fish_seen_subcommand_from $subcommands"
set -l run "not __fish_seen_subcommand_from check report list replay dialog"
set -l judging "not __fish_seen_subcommand_from list replay dialog"

complete -c exflate -n "$none" -a run -d 'Un-nest and write the result'
complete -c exflate -n "$none" -a check -d 'Say which looks stay and what changes'
complete -c exflate -n "$none" -a report -d 'Make a page with before and after side by side'
complete -c exflate -n "$none" -a list -d 'Show compositions, layers and nests'
complete -c exflate -n "$none" -a replay -d 'Play a journal to the plug-in'
complete -c exflate -n "$none" -a dialog -d "Draw the plug-in's dialog"
complete -c exflate -n "$none" -l version -d 'Show the version'
complete -c exflate -s h -l help -d 'Show a summary'

complete -c exflate -n "not __fish_seen_subcommand_from check list replay dialog" -s o -l output -r -F -d 'Write here'
complete -c exflate -n "$run" -l out-dir -x -a '(__fish_complete_directories)' -d 'Write each file into this folder'
complete -c exflate -n "$run" -s i -l in-place -d 'Replace each file by its result'
complete -c exflate -n "$run" -l recursive -d 'Go on with the nests that come out'
complete -c exflate -n "$run" -s j -l jobs -x -d 'Files at once'
complete -c exflate -n "$run" -l strict -d 'Write nothing if a look would change'
complete -c exflate -n "$run" -l only-exact -d 'Un-nest only what keeps its look'
complete -c exflate -n "$run" -l max-growth -x -d 'Keep shared nests beyond so many percent'
complete -c exflate -n "$run" -l journal -r -F -d 'Write what plug-in and host say to each other'
complete -c exflate -n "$run" -l dialog -d "Show the plug-in's dialog"

complete -c exflate -n "$judging" -l animation -x -d 'Id of an animation of a .lottie file'
complete -c exflate -n "$judging" -l comp -x -d 'Name or id of the composition'
complete -c exflate -n "$judging" -l layer -x -d 'Name or #index of a nest'
complete -c exflate -n "$judging" -l script-time -x -d 'Seconds for all scripts of a file'
complete -c exflate -n "$judging" -l copy-attributes -d "Carry the nest's attributes over"
complete -c exflate -n "$judging" -l discard-attributes -d "Leave the nest's attributes out"
complete -c exflate -n "$judging" -l delete-source -d 'Delete the nested composition too'
complete -c exflate -n "$judging" -l keep-in-comp -d 'Keep the nest, switched off'
complete -c exflate -n "$judging" -l prefix -x -d "Text in front of each layer's name"
complete -c exflate -n "$judging" -l prepend-name -d "The nest's name in front of each layer's name"
complete -c exflate -n "$judging" -l fix-random -d 'Give random expressions a fixed seed'

complete -c exflate -n "__fish_seen_subcommand_from check" -l format -x -a 'text json junit' -d 'Form of the report'
complete -c exflate -n "__fish_seen_subcommand_from check" -l prove -d 'Compare pictures too'
complete -c exflate -n "__fish_seen_subcommand_from list" -l json -d 'For other programs'
complete -c exflate -n "__fish_seen_subcommand_from dialog" -l picture -r -F -d 'Write the picture here'
complete -c exflate -n "__fish_seen_subcommand_from dialog" -l scale -x -d 'Dots for each pixel'
complete -c exflate -n "__fish_seen_subcommand_from dialog" -l first-use -d 'As if nothing had been remembered'
complete -c exflate -n "__fish_seen_subcommand_from dialog" -l click -x -d 'Click a control before'
complete -c exflate -n "__fish_seen_subcommand_from dialog" -l type -x -d 'Type a text before, CONTROL=TEXT'
