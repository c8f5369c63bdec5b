// Carries the precompiled header of the rules.
