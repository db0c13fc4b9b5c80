"""Makes small speech models from nothing: sentences, synthetic voices, training, and the file for whisper-cli."""
