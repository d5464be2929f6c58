CASES = []
