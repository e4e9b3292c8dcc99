#!/bin/sh
# Brings the translation files up to date with the sources and says how many texts are to be translated.
set -eu
exec cmake -P "$(dirname "$0")/../cmake/UpdateTranslations.cmake"
