#!/bin/sh
# Prints the screen of Neovim with a broken text: its problems and its outline. Needs nvim and tmux.
#
#   scripts/editor-screen.sh [KDX]
set -eu
cd "$(dirname "$0")/.."
kdx=$(realpath "${1-build/release/cli/kdx}")
folder=$(mktemp -d)
screen() { tmux -f /dev/null -L "kdx$$" "$@"; }
trap 'screen kill-server 2>/dev/null || true; rm -rf "$folder"' EXIT

sed -n '/^```lua$/,/^```$/p' docs/editors.md |
    sed "/^\`\`\`/d; s|~/kdx/editors|$PWD/editors|" >"$folder/init.lua"
sed 's/450 \[nm\]$/450 [nm] # blue/; s/Gain = 14.5/Gain -> 14.5/; 0,/Gain = 10/s//&\n      Gain = 12/' \
    examples/instrument.kdx | sed -n '11,28p' >"$folder/channels.kdx"
PATH=$(dirname "$kdx"):$PATH screen new-session -d -x 96 -y 28 -c "$folder" \
    nvim -u init.lua -i NONE -n channels.kdx
sleep 2
screen send-keys ":lua vim.lsp.buf.document_symbol()" Enter
sleep 1
screen capture-pane -p
