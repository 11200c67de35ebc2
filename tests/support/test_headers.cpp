// A library needs a source; what matters are the headers compiled with it.
