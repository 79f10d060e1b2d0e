#!/usr/bin/python3
"""ansible-test, whose tests find the machine's own packages instead of those that it would download."""

import functools

from ansible_test._internal import main
from ansible_test._internal.commands import sanity

if __name__ == "__main__":
    sanity.create_virtual_environment = functools.partial(sanity.create_virtual_environment, system_site_packages=True)
    sanity.run_pip = lambda *_arguments: None
    main()
