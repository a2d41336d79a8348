// Carries the compiled headers; holds no code.
