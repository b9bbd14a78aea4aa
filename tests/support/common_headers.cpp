// Nothing of its own: the target around it holds the precompiled headers of the tests.
