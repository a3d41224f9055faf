# SPDX-License-Identifier: MIT
# Completion of dozely-admin for fish. What there is to complete, the tool itself knows.
function __dozely_admin_complete
    set -l words (commandline -opc) (commandline -ct)
    set -l candidates (command $words[1] complete -- $words[2..-1] 2> /dev/null)
    if test (count $candidates) -gt 0
        printf '%s\n' $candidates
    else
        __fish_complete_path (commandline -ct)
    end
end
complete -c dozely-admin -f -a '(__dozely_admin_complete)'
