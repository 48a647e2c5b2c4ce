// A module has no code of its own beside the libraries.
