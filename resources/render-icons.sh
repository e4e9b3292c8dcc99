#!/bin/sh
# Renders the icons from their SVG sources, each at its own size and, for high-resolution screens, as
# NAME@2x.png at twice that size. The PNG files are kept in the repository: building needs no renderer.
# Run it after changing a source. It needs rsvg-convert (Debian: librsvg2-bin).
#
# The drawings sit on a grid of 24 px with 3 px left free around them (a sign in a tile may use 1 px),
# lines are 1.5 px wide and light, for dark panels. Edges that are straight lie on whole pixels.
set -eu
cd "$(dirname "$0")"

render() { # SVG FOLDER
    name=$(basename "$1" .svg)
    mkdir -p "$2"
    rsvg-convert --zoom 1 --output "$2/$name.png" "$1"
    rsvg-convert --zoom 2 --output "$2/$name@2x.png" "$1"
}

for icon in svg/icon24_*.svg; do
    render "$icon" Resource
done
for mask in svg/icon54_mask-*.svg; do
    render "$mask" Resource/DefaultMask
done
