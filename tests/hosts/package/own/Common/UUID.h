#error "Ours is wanted, and the host's was found."
