#include "TolmiCore/OllamaConfiguration.h"

const QString OllamaConfiguration::defaultEndpoint = QStringLiteral("http://localhost:11434");

const QString OllamaConfiguration::defaultSystemPrompt = QStringLiteral(
    "You are a text cleanup assistant. Clean up dictated speech into polished written text.\n"
    "Rules:\n"
    "- Remove filler words (um, uh, like, you know, deci, p\u0103i, etc.)\n"
    "- Fix grammar and punctuation\n"
    "- Keep the original language \u2014 do NOT translate\n"
    "- Preserve the original meaning exactly\n"
    "- Do not add or remove information\n"
    "- Return ONLY the cleaned text, no explanations");
