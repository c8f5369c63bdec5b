// Carries the precompiled header of the screens.
