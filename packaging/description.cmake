# What the packages say of the plug-in; the version is the project's.
set(plugin_name Exflate)
set(plugin_identifier org.exflate.Exflate)
set(plugin_entry_point EntryPointFunc)
set(plugin_kind AEgx)  # a general plug-in
set(plugin_creator FXTC)
set(plugin_category "General Plugin")
