"""Trains small speech models from scratch: sentences, synthetic voices, training, and the file for whisper-cli."""
