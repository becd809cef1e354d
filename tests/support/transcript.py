'''What guides show of a session at a terminal.'''


def examples(text, *prompts):
    '''Indented lines: a prompt and a command, then what it prints. Yields the prompt, the command, what is printed.'''
    found = []
    in_example = False
    for line in text.splitlines():
        prompt = next((prompt for prompt in prompts if line.startswith('    ' + prompt)), None)
        if prompt:
            found.append([prompt, line[4 + len(prompt):], ''])
            in_example = True
        elif in_example and line.startswith('    '):
            found[-1][2] += line[4:] + '\n'
        else:
            in_example = False
    return found


def pattern(text):
    '''For fnmatch: "..." stands for anything.'''
    return ''.join(f'[{c}]' if c in '[?*' else c for c in text).replace('...', '*')
