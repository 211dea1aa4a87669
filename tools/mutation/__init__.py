# Mutation testing of the plug-in; tools/mutate is its command.
